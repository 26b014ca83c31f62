#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <qqmlregistration.h>

namespace vorn {

/// One corner of a camera's viewfinder, with its bend in the same corner of the item. Four small items have a tenth of
/// the pixels of a large one around all of them.
class CornerBracket : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY looksChanged)
    Q_PROPERTY(double thickness MEMBER thickness_ NOTIFY looksChanged)
    Q_PROPERTY(double radius MEMBER radius_ NOTIFY looksChanged)
    Q_PROPERTY(bool isRight MEMBER isRight_ NOTIFY looksChanged)
    Q_PROPERTY(bool isBottom MEMBER isBottom_ NOTIFY looksChanged)

public:
    using PaintedItem::PaintedItem;

    void paint(QPainter* painter) override;

private:
    QColor color_ = Qt::black;
    double thickness_ = 4;
    double radius_ = 24; ///< of the outer edge
    bool isRight_ = false;
    bool isBottom_ = false;
};

} // namespace vorn
