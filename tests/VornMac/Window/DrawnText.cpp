#include "tests/VornMac/Window/DrawnText.h"

#include <algorithm>
#include <string_view>

namespace vorn::testing {
namespace {

/// Whether `item` is of `type`. QML's class names have a suffix, such as "_QMLTYPE_12".
bool is(const QQuickItem& item, std::string_view type)
{
    const std::string_view name = item.metaObject()->className();
    return name.starts_with(type) && (name.size() == type.size() || name[type.size()] == '_');
}

QRectF inWindow(const QQuickItem& item, const QRectF& frame)
{
    return item.mapRectToScene(frame);
}

/// The frame of a text item's letters, which may be anywhere in the item.
QRectF lettersOf(const QQuickItem& item)
{
    const double width = item.property("contentWidth").toDouble();
    const double height = item.property("contentHeight").toDouble();
    const double left = item.property("leftPadding").toDouble();
    const double right = item.property("rightPadding").toDouble();
    const double top = item.property("topPadding").toDouble();
    const double bottom = item.property("bottomPadding").toDouble();
    const int alignment = item.property("effectiveHorizontalAlignment").toInt();
    const int vertical = item.property("verticalAlignment").toInt();
    const double spareX = item.width() - left - right - width;
    const double spareY = item.height() - top - bottom - height;
    const double x = alignment == Qt::AlignHCenter ? spareX / 2 : alignment == Qt::AlignRight ? spareX : 0;
    const double y = vertical == Qt::AlignVCenter ? spareY / 2 : vertical == Qt::AlignBottom ? spareY : 0;
    return {left + x, top + y, width, height};
}

void addContext(DrawnText& text, QQuickWindow& window)
{
    text.room = QRectF(0, 0, window.width(), window.height());
    text.visible = text.frame;
    for (const QQuickItem* around = text.item; around != nullptr; around = around->parentItem()) {
        text.opacity *= around->opacity();
        const bool scrolls = around->inherits("QQuickFlickable") && around->property("interactive").toBool();
        if (scrolls) text.scrolls = true;
        if (!around->clip()) continue;
        text.visible &= inWindow(*around, around->clipRect());
        if (!scrolls) text.room &= inWindow(*around, around->clipRect());
    }
}

void collect(QQuickItem* item, QQuickWindow& window, std::vector<DrawnText>& texts)
{
    if (!item->isVisible() || item->opacity() == 0) return;
    if (is(*item, "DigitText")) {
        DrawnText text;
        text.text = item->property("text").toString();
        text.item = item;
        text.frame = inWindow(*item, item->boundingRect());
        text.color = item->property("color").value<QColor>();
        addContext(text, window);
        if (!text.text.isEmpty()) texts.push_back(text);
        return;
    }
    if (item->inherits("QQuickText")) {
        DrawnText text;
        text.text = item->property("text").toString();
        text.item = item;
        const QRectF letters = lettersOf(*item);
        constexpr double tolerance = 1; // fonts are rounded up
        text.isCut = item->property("truncated").toBool() || letters.width() > item->width() + tolerance ||
                     letters.height() > item->height() + tolerance;
        text.frame = inWindow(*item, letters);
        text.color = item->property("color").value<QColor>();
        addContext(text, window);
        if (!text.text.isEmpty()) texts.push_back(text);
    }
    for (QQuickItem* child : item->childItems()) collect(child, window, texts);
}

} // namespace

std::vector<DrawnText> drawnTexts(QQuickWindow& window)
{
    std::vector<DrawnText> texts;
    collect(window.contentItem(), window, texts);
    return texts;
}

std::vector<std::string> wordsOf(const std::vector<DrawnText>& texts)
{
    std::vector<std::string> words;
    words.reserve(texts.size());
    for (const DrawnText& text : texts) words.push_back(text.text.toStdString());
    return words;
}

} // namespace vorn::testing
