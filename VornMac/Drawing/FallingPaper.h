#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <qqmlregistration.h>

namespace vorn {

/// Pieces of coloured paper that fall once over the item's whole height, each time along the same paths. Draws nothing
/// before and after.
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
    double progress_ = 1; ///< 0…1, of the time
    QColor startColor_ = Qt::black;
    QColor endColor_ = Qt::black; ///< each piece has a colour between the two
};

} // namespace vorn
