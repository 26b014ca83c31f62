#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <qqmlregistration.h>

namespace vorn {

/// The soft shadow of a card with round corners, from `blur` outside its edges to `blur` inside them. Make it larger
/// than the card by `blur` on every side, and place it below the card.
class SoftShadow : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY looksChanged)
    Q_PROPERTY(double blur MEMBER blur_ NOTIFY looksChanged)
    Q_PROPERTY(double radius MEMBER radius_ NOTIFY looksChanged)

public:
    using PaintedItem::PaintedItem;

    void paint(QPainter* painter) override;

protected:
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    QColor color_ = Qt::black; ///< at its darkest
    double blur_ = 24;
    double radius_ = 16; ///< of the card
};

} // namespace vorn
