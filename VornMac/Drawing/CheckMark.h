#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <qqmlregistration.h>

namespace vorn {

/// A check mark on a disc, drawn as far as `progress`: first the disc grows, then the check is drawn on it.
class CheckMark : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double progress MEMBER progress_ NOTIFY looksChanged)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY looksChanged)
    Q_PROPERTY(QColor inkColor MEMBER inkColor_ NOTIFY looksChanged)

public:
    using PaintedItem::PaintedItem;

    void paint(QPainter* painter) override;

private:
    double progress_ = 1; ///< 0…1
    QColor color_ = Qt::black;
    QColor inkColor_ = Qt::white;
};

} // namespace vorn
