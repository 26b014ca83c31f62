#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <qqmlregistration.h>

namespace vorn {

/// A bar with round ends, filled from the left with a gradient of two colours; if it is square, it is a disc. The
/// gradient spans the whole bar, so the fill's end changes colour as the bar fills.
class AccentBar : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double value MEMBER value_ NOTIFY looksChanged)
    Q_PROPERTY(double sweep MEMBER sweep_ NOTIFY looksChanged)
    Q_PROPERTY(QColor startColor MEMBER startColor_ NOTIFY looksChanged)
    Q_PROPERTY(QColor endColor MEMBER endColor_ NOTIFY looksChanged)
    Q_PROPERTY(QColor trackColor MEMBER trackColor_ NOTIFY looksChanged)

public:
    using PaintedItem::PaintedItem;

    void paint(QPainter* painter) override;

private:
    void fill(QPainter& painter, double from, double to) const;

    double value_ = 1;  ///< 0…1, how much is filled
    double sweep_ = -1; ///< where the light moving along the bar is: it enters at 0 and has left at 1; none below 0
    QColor startColor_ = Qt::black;
    QColor endColor_ = Qt::black;
    QColor trackColor_ = Qt::transparent;
};

} // namespace vorn
