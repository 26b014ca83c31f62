#pragma once

#include <QImage>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickRenderTarget>
#include <QQuickWindow>

namespace vorn::testing {

/// A window without a screen, with `pixelRatio` pixels per point, that shows one item on a transparent background.
class Canvas {
public:
    Canvas(QQuickItem& item, QSize size, double pixelRatio)
        : item_(item), picture_((QSizeF(size) * pixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied)
    {
        picture_.setDevicePixelRatio(pixelRatio);
        QQuickRenderTarget target = QQuickRenderTarget::fromPaintDevice(&picture_);
        target.setDevicePixelRatio(pixelRatio);
        window_.setColor(Qt::transparent);
        window_.resize(size);
        window_.setRenderTarget(target);
        item_.setParentItem(window_.contentItem());
        item_.setSize(size);
    }
    ~Canvas() { item_.setParentItem(nullptr); }
    Canvas(Canvas&&) = delete;

    /// The item as the renderer draws it in its next frame.
    QImage frame()
    {
        picture_.fill(Qt::transparent);
        control_.polishItems();
        control_.sync();
        control_.render();
        QImage result = picture_;
        result.setDevicePixelRatio(1);
        return result;
    }

private:
    QQuickItem& item_;
    QImage picture_;
    QQuickRenderControl control_;
    QQuickWindow window_{&control_};
};

inline QImage drawn(QQuickItem& item, QSize size, double pixelRatio = 1)
{
    return Canvas(item, size, pixelRatio).frame();
}

/// How many pixels of `area` are painted.
inline int paintedIn(const QImage& picture, const QRect& area)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x) count += qAlpha(picture.pixel(x, y)) > 0 ? 1 : 0;
    return count;
}

} // namespace vorn::testing
