#include "VornMac/Drawing/Symbol.h"

#include <algorithm>

#include <QPainter>
#include <QSvgRenderer>

namespace vorn {

Symbol::Symbol(QQuickItem* parent) : PaintedItem(parent)
{
    setImplicitSize(16, 16);
}

void Symbol::paint(QPainter* painter)
{
    if (name_.isEmpty()) return;
    QSvgRenderer drawing(QStringLiteral(":/qt/qml/Vorn/Drawing/symbols/%1.svg").arg(name_));
    if (!drawing.isValid()) {
        qWarning("there is no symbol %s", qUtf8Printable(name_));
        return;
    }
    const qreal side = std::min(width(), height());
    const QRectF frame((width() - side) / 2, (height() - side) / 2, side, side);
    painter->setRenderHint(QPainter::Antialiasing);
    drawing.render(painter, frame);
    if (color_.alpha() == 0) return;
    // The item's own surface holds only the symbol: its opaque pixels take the colour.
    painter->setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter->fillRect(boundingRect(), color_);
}

} // namespace vorn
