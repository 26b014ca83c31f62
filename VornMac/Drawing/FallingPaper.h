#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <qqmlregistration.h>

namespace vorn {

/// Pieces of coloured paper that fall once through about three quarters of the item's height or more, along the same
/// paths each time. Draws nothing before and after.
class FallingPaper : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double progress MEMBER progress_ NOTIFY looksChanged)
    Q_PROPERTY(QColor startColor MEMBER startColor_ NOTIFY looksChanged)
    Q_PROPERTY(QColor endColor MEMBER endColor_ NOTIFY looksChanged)

public:
    using PaintedItem::PaintedItem;

    void paint(QPainter* painter) override;

private:
    double progress_ = 1; ///< 0…1, the fraction of the time that has passed
    QColor startColor_ = Qt::black;
    QColor endColor_ = Qt::black; ///< each piece has a colour between the two
};

} // namespace vorn
