#include "VornMac/Drawing/AccentBar.h"

#include <algorithm>
#include <utility>

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace vorn {

AccentBar::AccentBar(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    connect(this, &AccentBar::coloursChanged, this, [this] { update(); });
}

void AccentBar::setValue(double value)
{
    const double bounded = std::clamp(value, 0.0, 1.0);
    if (std::exchange(value_, bounded) == bounded) return;
    emit valueChanged();
    update();
}

void AccentBar::paint(QPainter* painter)
{
    const QRectF frame = boundingRect();
    const qreal radius = frame.height() / 2;
    QPainterPath track;
    track.addRoundedRect(frame, radius, radius);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->fillPath(track, trackColor_);
    if (value_ <= 0) return;
    QPainterPath filled;
    filled.addRoundedRect(QRectF(frame.topLeft(), QSizeF(frame.width() * value_, frame.height())), radius, radius);
    QLinearGradient colours(frame.topLeft(), frame.topRight());
    colours.setColorAt(0, startColor_);
    colours.setColorAt(1, endColor_);
    painter->fillPath(filled.intersected(track), colours);
}

} // namespace vorn
