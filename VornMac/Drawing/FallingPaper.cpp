#include "VornMac/Drawing/FallingPaper.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <QPainter>

namespace vorn {
namespace {

constexpr int bits = 36;
constexpr double length = 9; // of a piece, in points
constexpr double breadth = 5;
constexpr double lastStart = 0.3;  // of the time; no piece starts later
constexpr double fadesAfter = 0.7; // of a piece's time

/// A number from 0 to 1 for each piece; another `salt` gives other numbers.
double spread(int bit, double salt)
{
    const double golden = std::numbers::phi * (bit + 1) + salt * (bit + 1) * (bit + 1);
    return golden - std::floor(golden);
}

QColor between(const QColor& one, const QColor& other, double part)
{
    const auto mix = [part](int from, int to) { return static_cast<int>(std::lround(from + (to - from) * part)); };
    return {mix(one.red(), other.red()), mix(one.green(), other.green()), mix(one.blue(), other.blue())};
}

} // namespace

void FallingPaper::paint(QPainter* painter)
{
    if (progress_ <= 0 || progress_ >= 1) return;
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    for (int bit = 0; bit < bits; ++bit) {
        const double start = lastStart * spread(bit, 0.37);
        const double way = std::min((progress_ - start) / (1 - lastStart), 1.0);
        if (way <= 0) continue;
        const double swing = std::sin(2 * std::numbers::pi * (way * (1 + spread(bit, 0.71)) + spread(bit, 0.13)));
        const double speed = 0.75 + 0.25 * spread(bit, 0.53);
        painter->save();
        painter->translate(width() * spread(bit, 0) + 14 * swing,
                           (height() + length) * std::pow(way, 1.3) * speed - length);
        painter->rotate(540 * way * (spread(bit, 0.29) - 0.5) + 360 * spread(bit, 0.91));
        painter->setOpacity(way > fadesAfter ? (1 - way) / (1 - fadesAfter) : 1);
        painter->setBrush(between(startColor_, endColor_, spread(bit, 0.17)));
        painter->drawRoundedRect(QRectF(-length / 2, -breadth / 2, length, breadth), 1.5, 1.5);
        painter->restore();
    }
}

} // namespace vorn
