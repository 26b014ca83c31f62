#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <qqmlregistration.h>

namespace vorn {

/// Bits of coloured paper that fall once over the item's whole height, each time on the same ways. Nothing is drawn
/// before and after.
class FallingPaper : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double progress MEMBER progress_ NOTIFY looksChanged)
    Q_PROPERTY(QColor startColor MEMBER startColor_ NOTIFY looksChanged)
    Q_PROPERTY(QColor endColor MEMBER endColor_ NOTIFY looksChanged)

public:
    explicit FallingPaper(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

signals:
    void looksChanged();

private:
    double progress_ = 1; ///< 0…1, of the time
    QColor startColor_ = Qt::black;
    QColor endColor_ = Qt::black; ///< each bit has one between the two
};

} // namespace vorn
