#include "VornMac/Drawing/QRModules.h"

#include "VornMac/QRCode/QRMatrix.h"

#include <algorithm>
#include <stdexcept>

#include <QPainter>

namespace vorn {
namespace {

void drawModules(QPainter& painter, const QRMatrix& code, QSize pixels)
{
    const int across = code.size() + 2 * QRMatrix::quietZone;
    const int module = std::min(pixels.width(), pixels.height()) / across;
    const int left = (pixels.width() - module * code.size()) / 2;
    const int top = (pixels.height() - module * code.size()) / 2;
    for (int row = 0; row < code.size(); ++row) {
        for (int column = 0; column < code.size(); ++column) {
            if (code.isDark(row, column))
                painter.fillRect(left + column * module, top + row * module, module, module, Qt::black);
        }
    }
}

} // namespace

QRModules::QRModules(QQuickItem* parent) : PaintedItem(parent)
{
    setFlag(ItemHasContents, false);
    connect(this, &QRModules::looksChanged, this, [this] {
        setFlag(ItemHasContents, !payload_.isEmpty()); // without a code, no image is kept
        update();
    });
    setSmooth(false);
}

void QRModules::paint(QPainter* painter)
{
    const QByteArray bytes = payload_.toUtf8();
    if (bytes.isEmpty()) return;
    const QPaintDevice* surface = painter->device();
    const QSize pixels(surface->width(), surface->height());
    painter->resetTransform(); // paints in whole pixels of the surface, not in units of the layout
    painter->setRenderHint(QPainter::Antialiasing, false);
    try {
        drawModules(*painter, QRMatrix({bytes.constData(), static_cast<std::size_t>(bytes.size())}), pixels);
    } catch (const std::length_error&) {
        qWarning("a code is too long to be shown"); // never log its text: it links this Mac
    }
}

} // namespace vorn
