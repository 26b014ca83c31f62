#pragma once

#include <string>
#include <vector>

#include <QColor>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRectF>

namespace vorn::testing {

/// Text as it is drawn: one item of words, or a row of digits.
struct DrawnText {
    QString text;
    QQuickItem* item = nullptr;
    QRectF frame;       ///< of its letters, in the window
    QRectF room;        ///< the part of the window that it may fill: what it lies in cuts it, save what can be scrolled
    QRectF visible;     ///< the part of `frame` that shows
    bool isCut = false; ///< ends in dots that the author did not write, or is larger than its item
    bool scrolls = false; ///< lies in something that can be scrolled
    QColor color;
    double opacity = 1; ///< of all it lies in
};

/// The text that `window` shows, in the order of its structure.
std::vector<DrawnText> drawnTexts(QQuickWindow& window);
std::vector<std::string> wordsOf(const std::vector<DrawnText>& texts);

} // namespace vorn::testing
