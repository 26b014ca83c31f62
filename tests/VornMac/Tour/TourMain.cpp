#include "tests/VornMac/Window/Scenes.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <QGuiApplication>

namespace vorn::testing {
namespace {

/// Writes a picture of `scene` and gives whether all went well.
bool writePicture(const Scene& scene, Appearance::Theme theme, QSize size, const std::string& path)
{
    WindowFixture fix;
    Appearance::shared().setTheme(theme);
    scene.play(fix);
    fix.window().resize(size);
    return fix.picture().save(QString::fromStdString(path));
}

bool writePictures(const std::string& folder, QSize size, std::string_view only)
{
    bool allWell = true;
    for (const Scene& scene : allScenes()) {
        if (scene.name.find(only) == std::string::npos) continue;
        for (const auto& [theme, name] :
             {std::pair(Appearance::Theme::light, "light"), std::pair(Appearance::Theme::dark, "dark")}) {
            allWell &= writePicture(scene, theme, size, folder + "/" + scene.name + "-" + name + ".png");
        }
    }
    return allWell;
}

} // namespace
} // namespace vorn::testing

/// vorn-tour DIR [WIDTH HEIGHT [PART-OF-NAME]]
int main(int argc, char** argv)
{
    if (argc < 2 || std::string_view(argv[1]) == "--help") {
        std::fputs("Usage: vorn-tour DIR [WIDTH HEIGHT [PART-OF-NAME]]\n"
                   "Writes a picture of every screen in every phase, light and dark, into DIR.\n",
                   stderr);
        return argc < 2 ? 2 : 0;
    }
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("QT_QUICK_BACKEND", "software", 0);
    const QGuiApplication application(argc, argv);
    ::testing::GTEST_FLAG(throw_on_failure) = true;
    std::filesystem::create_directories(argv[1]);
    const QSize size = argc > 3 ? QSize(std::atoi(argv[2]), std::atoi(argv[3])) : QSize(1180, 760);
    return vorn::testing::writePictures(argv[1], size, argc > 4 ? argv[4] : "") ? 0 : 1;
}
