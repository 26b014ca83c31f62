#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <qqmlregistration.h>

namespace vorn {

/// What a QR code looks like, without being one: it stands where a code will, and no reader finds anything in it.
class CodeShape : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY looksChanged)

public:
    explicit CodeShape(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

signals:
    void looksChanged();

private:
    QColor color_ = Qt::black;
};

} // namespace vorn
