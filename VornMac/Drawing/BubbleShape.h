#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <qqmlregistration.h>

namespace vorn {

/// A speech bubble behind a message: round corners, and a tail at the bottom of the side that speaks.
class BubbleShape : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY looksChanged)
    Q_PROPERTY(Tail tail MEMBER tail_ NOTIFY looksChanged)

public:
    enum Tail { NoTail, LeftTail, RightTail };
    Q_ENUM(Tail)

    explicit BubbleShape(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

signals:
    void looksChanged();

private:
    QColor color_ = Qt::black;
    Tail tail_ = NoTail;
};

} // namespace vorn
