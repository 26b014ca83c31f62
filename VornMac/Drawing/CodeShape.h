#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <qqmlregistration.h>

namespace vorn {

/// What a QR code looks like, without being one: it stands where a code will, and no reader finds anything in it.
class CodeShape : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY looksChanged)

public:
    using PaintedItem::PaintedItem;

    void paint(QPainter* painter) override;

private:
    QColor color_ = Qt::black;
};

} // namespace vorn
