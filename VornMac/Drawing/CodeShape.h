#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <qqmlregistration.h>

namespace vorn {

/// Looks like a QR code but has no content, so scanners find nothing in it. Shown in place of a code until there is
/// one.
class CodeShape : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// In an item this many points wide, or a multiple of it, all modules have the same size.
    Q_PROPERTY(int modulesAcross READ modulesAcross CONSTANT)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY looksChanged)

public:
    explicit CodeShape(QQuickItem* parent = nullptr);

    /// Modules from edge to edge, the quiet zone included.
    static int modulesAcross();

    void paint(QPainter* painter) override;

private:
    QColor color_ = Qt::black;
};

} // namespace vorn
