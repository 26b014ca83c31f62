#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <qqmlregistration.h>

namespace vorn {

/// The look of a QR code without its content: it takes a code's place until there is one, and no reader finds anything
/// in it.
class CodeShape : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// An item of this many points, or a multiple, has modules of equal size.
    Q_PROPERTY(int modulesAcross READ modulesAcross CONSTANT)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY looksChanged)

public:
    explicit CodeShape(QQuickItem* parent = nullptr);

    /// Modules from edge to edge, the light margin included.
    static int modulesAcross();

    void paint(QPainter* painter) override;

private:
    QColor color_ = Qt::black;
};

} // namespace vorn
