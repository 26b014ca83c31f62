#pragma once

#include <QImage>
#include <QPainter>
#include <QQuickPaintedItem>

namespace vorn::testing {

/// `item` as it paints itself, `pixelRatio` pixels a point, on nothing.
inline QImage drawn(QQuickPaintedItem& item, QSize size, double pixelRatio = 1)
{
    item.setSize(size);
    QImage picture((QSizeF(size) * pixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.scale(pixelRatio, pixelRatio); // as the scene graph does; its surfaces know no ratio
    item.paint(&painter);
    return picture;
}

/// How many pixels of `area` are painted at all.
inline int paintedIn(const QImage& picture, const QRect& area)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x) count += qAlpha(picture.pixel(x, y)) > 0 ? 1 : 0;
    return count;
}

} // namespace vorn::testing
