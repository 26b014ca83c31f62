#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <qqmlregistration.h>

namespace vorn {

/// The four corners of a camera's viewfinder around what is to be scanned.
class CornerBrackets : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY looksChanged)
    Q_PROPERTY(double thickness MEMBER thickness_ NOTIFY looksChanged)
    Q_PROPERTY(double armLength MEMBER armLength_ NOTIFY looksChanged)
    Q_PROPERTY(double radius MEMBER radius_ NOTIFY looksChanged)

public:
    using PaintedItem::PaintedItem;

    void paint(QPainter* painter) override;

private:
    QColor color_ = Qt::black;
    double thickness_ = 4;
    double armLength_ = 40; ///< from the corner along each side
    double radius_ = 24;    ///< of the outer edge
};

} // namespace vorn
