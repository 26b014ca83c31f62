#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <qqmlregistration.h>

namespace vorn {

/// What a QR code looks like, without being one: it stands where a code will, and no reader finds anything in it.
class CodeShape : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// An item of as many points or a multiple of them has modules of one size.
    Q_PROPERTY(int modulesAcross READ modulesAcross CONSTANT)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY looksChanged)

public:
    explicit CodeShape(QQuickItem* parent = nullptr);

    /// Modules from edge to edge, the light ones around included.
    static int modulesAcross();

    void paint(QPainter* painter) override;

private:
    QColor color_ = Qt::black;
};

} // namespace vorn
