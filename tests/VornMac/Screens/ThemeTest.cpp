#include "tests/VornMac/Window/Scenes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>

#include <gmock/gmock.h>

#include <QFont>

namespace vorn::testing {
namespace {

struct ThemeColour {
    const char* name;
    const char* dark;
    const char* light;
};

constexpr ThemeColour themeColours[] = {
    {"background", "#0E0F10", "#FFFFFF"},     {"ink", "#F4F4F5", "#0D1214"},
    {"mutedTitle", "#5E5E63", "#B5B5B5"},     {"secondary", "#A1A1A6", "#5F6366"},
    {"tertiary", "#6E6E73", "#9A9DA0"},       {"panel", "#1C1C1E", "#F4F4F4"},
    {"card", "#2A2A2D", "#FFFFFF"},           {"border", "#2F2F33", "#E3E3E3"},
    {"pill", "#1F1F22", "#F2F2F2"},           {"disabledFill", "#1E1F21", "#F3F4F4"},
    {"disabledText", "#5C5C61", "#A9ADB0"},   {"primaryFill", "#F4F4F5", "#0D1214"},
    {"primaryText", "#0D1214", "#FFFFFF"},    {"incomingBubble", "#3A3A3C", "#E9E9EB"},
    {"outgoingBubble", "#1F8BFF", "#1F8BFF"}, {"success", "#2BB673", "#2BB673"},
    {"warning", "#E8A33D", "#E8A33D"},        {"accentStart", "#C3A3F7", "#C3A3F7"},
    {"accentEnd", "#F27BA0", "#F27BA0"},
};

void expectColours(QObject& theme, bool isDark)
{
    for (const ThemeColour& colour : themeColours) {
        SCOPED_TRACE(colour.name);
        const QColor value = theme.property(colour.name).value<QColor>();
        EXPECT_EQ(value.name(QColor::HexArgb).toUpper().toStdString(),
                  "#FF" + std::string(isDark ? colour.dark : colour.light).substr(1));
    }
}

TEST(Theme, HasItsColoursAndFollowsTheAppearance)
{
    WindowFixture fix;
    fix.model.launch();
    expectColours(fix.theme(), false);
    EXPECT_EQ(fix.picture().pixelColor(2, 2), QColor("#FFFFFF"));
    Appearance::shared().setTheme(Appearance::Theme::dark);
    expectColours(fix.theme(), true);
    EXPECT_EQ(fix.picture().pixelColor(2, 2), QColor("#0E0F10"));
    Appearance::shared().setTheme(Appearance::Theme::light);
    expectColours(fix.theme(), false);
}

TEST(Theme, HasItsFonts)
{
    struct Case {
        const char* name;
        int size;
        QFont::Weight weight;
    };
    WindowFixture fix;
    fix.model.launch();
    const auto* fonts = fix.theme().property("fonts").value<QObject*>();
    for (const double scale : {1.0, 1.5}) {
        Appearance::shared().setTextScale(scale);
        for (const Case& row :
             {Case{"title", 28, QFont::DemiBold}, Case{"label", 13, QFont::Medium}, Case{"body", 14, QFont::Normal},
              Case{"bodyMedium", 14, QFont::Medium}, Case{"caption", 12, QFont::Normal},
              Case{"button", 14, QFont::Medium}, Case{"badge", 10, QFont::Bold}}) {
            SCOPED_TRACE(::testing::Message() << row.name << ", text " << scale);
            const QFont font = fonts->property(row.name).value<QFont>();
            EXPECT_EQ(font.pixelSize(), std::lround(row.size * scale));
            EXPECT_EQ(font.weight(), row.weight);
            EXPECT_EQ(font.family(), Appearance::shared().fontFamily());
        }
    }
}

// Contrast, by WCAG 2.

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const auto [low, high] = std::minmax({luminance(one), luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

/// `colour` as it appears on `ground` with `opacity`.
QColor blended(const QColor& colour, double opacity, const QColor& ground)
{
    const auto mix = [opacity](float above, float below) {
        return static_cast<float>(above * opacity + below * (1 - opacity));
    };
    return QColor::fromRgbF(mix(colour.redF(), ground.redF()), mix(colour.greenF(), ground.greenF()),
                            mix(colour.blueF(), ground.blueF()));
}

/// The most frequent colour of `frame`: letters cover less than the background.
QColor groundOf(const QImage& picture, const QRectF& frame)
{
    const QRect area = frame.toAlignedRect() & picture.rect();
    std::map<QRgb, int> counts;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x) ++counts[picture.pixel(x, y)];
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto& one, const auto& other) { return one.second < other.second; });
    return most != counts.end() ? QColor(most->first) : QColor();
}

std::string nameOf(const QColor& colour, bool isDark)
{
    if (colour == Qt::white) return "white";
    for (const ThemeColour& known : themeColours) {
        if (colour == QColor(isDark ? known.dark : known.light)) return known.name;
    }
    return colour.name().toStdString();
}

/// Pairs that fall short, with the least contrast that they must still reach. Their colours are given by the design,
/// and a disabled control need not be read.
struct Shortfall {
    const char* pair;
    double ratio;
};
constexpr Shortfall shortfalls[] = {
    {"disabledText on disabledFill, dark", 1.5},
    {"disabledText on disabledFill, light", 1.5},
    {"white on outgoingBubble", 3.3},
};

/// The least contrast for `pair`.
double leastContrast(const std::string& pair)
{
    constexpr double readable = 4.5;
    for (const Shortfall& shortfall : shortfalls) {
        if (pair.starts_with(shortfall.pair)) return shortfall.ratio;
    }
    return readable;
}

TEST(Theme, IsReadable)
{
    std::map<std::string, std::pair<double, std::string>> pairs;
    for (const Scene& scene : allScenes()) {
        WindowFixture fix;
        play(fix, scene.name);
        for (const bool isDark : {false, true}) {
            Appearance::shared().setTheme(isDark ? Appearance::Theme::dark : Appearance::Theme::light);
            const QImage picture = fix.picture();
            for (const DrawnText& text : drawnTexts(fix.window())) {
                if (text.text.size() == 1 && text.text.at(0).isLetter()) continue; // on a gradient
                const QColor ground = groundOf(picture, text.visible);
                if (!ground.isValid()) continue;
                const double ratio = contrast(blended(text.color, text.opacity, ground), ground);
                const std::string name =
                    nameOf(text.color, isDark) + " on " + nameOf(ground, isDark) + (isDark ? ", dark" : ", light");
                const auto known = pairs.try_emplace(name, ratio, scene.name + ": " + text.text.toStdString());
                if (ratio < known.first->second.first)
                    known.first->second = {ratio, scene.name + ": " + text.text.toStdString()};
            }
        }
    }
    EXPECT_GT(pairs.size(), 8U);
    for (const auto& [pair, worst] : pairs) {
        RecordProperty(pair, std::to_string(worst.first));
        EXPECT_GE(worst.first, leastContrast(pair)) << pair << " in " << worst.second;
    }
}

} // namespace
} // namespace vorn::testing
