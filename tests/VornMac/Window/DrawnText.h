#pragma once

#include <string>
#include <vector>

#include <QColor>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRectF>

namespace vorn::testing {

/// A drawn text: one item of words, or a row of digits.
struct DrawnText {
    QString text;
    QQuickItem* item = nullptr;
    QRectF frame;       ///< of its letters, in the window
    QRectF room;        ///< the part of the window that it may fill: clipped by its ancestors, except those that scroll
    QRectF visible;     ///< the visible part of `frame`
    bool isCut = false; ///< ends in dots that are not in the text, or is larger than its item
    bool scrolls = false; ///< inside an item that scrolls
    QColor color;
    double opacity = 1; ///< including that of its ancestors
};

/// The text that `window` shows, in the order of its structure.
std::vector<DrawnText> drawnTexts(QQuickWindow& window);
std::vector<std::string> wordsOf(const std::vector<DrawnText>& texts);

} // namespace vorn::testing
