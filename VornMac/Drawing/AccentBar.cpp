#include "VornMac/Drawing/AccentBar.h"

#include <algorithm>

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace vorn {
namespace {

/// The part of `bar` between two fractions of its width, with round ends.
QPainterPath roundedPart(const QRectF& bar, double from, double to)
{
    QPainterPath path;
    const QRectF part(bar.left() + bar.width() * from, bar.top(), bar.width() * (to - from), bar.height());
    path.addRoundedRect(part, bar.height() / 2, bar.height() / 2);
    return path;
}

} // namespace

void AccentBar::paint(QPainter* painter)
{
    painter->setRenderHint(QPainter::Antialiasing);
    painter->fillPath(roundedPart(boundingRect(), 0, 1), trackColor_);
    if (value_ > 0) fill(*painter, 0, std::min(value_, 1.0));
    constexpr double light = 0.3; // its width, as a fraction of the bar's
    const double head = sweep_ * (1 + light);
    if (sweep_ >= 0) fill(*painter, head - light, head);
}

void AccentBar::fill(QPainter& painter, double from, double to) const
{
    const QRectF frame = boundingRect();
    QLinearGradient colours(frame.topLeft(), frame.topRight());
    colours.setColorAt(0, startColor_);
    colours.setColorAt(1, endColor_);
    painter.fillPath(roundedPart(frame, from, to).intersected(roundedPart(frame, 0, 1)), colours);
}

} // namespace vorn
