#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <qqmlregistration.h>

namespace vorn {

/// The blades of a progress spinner around its centre, each fainter than the next.
class SpinnerBlades : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY looksChanged)
    Q_PROPERTY(int turns READ turns NOTIFY looksChanged)

public:
    using PaintedItem::PaintedItem;

    int turns() const noexcept { return turns_; } ///< how many blades it has turned by

    /// Turns by one blade.
    Q_INVOKABLE void turn();

    void paint(QPainter* painter) override;

private:
    QColor color_ = Qt::black;
    int turns_ = 0;
};

} // namespace vorn
