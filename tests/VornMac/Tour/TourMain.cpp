#include "tests/VornMac/Tour/ContactSheet.h"
#include "tests/VornMac/Tour/PictureDifference.h"
#include "tests/VornMac/Window/HandDrivenAnimations.h"
#include "tests/VornMac/Window/Scenes.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

#include <QGuiApplication>

namespace vorn::testing {
namespace {

/// A share of the pixels: the dot of an i is more.
constexpr double tolerated(const Scene& /*unused*/)
{
    return 0.0002;
}

/// What moves may be a frame late on a busy machine.
constexpr double tolerated(const MovingScene& /*unused*/)
{
    return 0.01;
}

struct TourOptions {
    std::string folder;
    int width = 1180;
    int height = 760;
    std::string only;
    std::string references; ///< empty: nothing is compared
};

/// Everything has come to rest.
QImage pictureOf(const Scene& scene, Appearance::Theme theme, QSize size)
{
    HandDrivenAnimations animations;
    WindowFixture fix;
    Appearance::shared().setTheme(theme);
    scene.play(fix);
    fix.window().resize(size);
    animations.pass(1000);
    return fix.picture();
}

QImage pictureOf(const MovingScene& scene, Appearance::Theme theme, QSize size)
{
    HandDrivenAnimations animations;
    WindowFixture fix(WindowFixture::Motion::full);
    Appearance::shared().setTheme(theme);
    play(fix, scene.scene);
    fix.window().resize(size);
    animations.pass(static_cast<int>(scene.after.count()));
    return fix.picture();
}

/// Whether `picture` looks as its reference, but for a share of its pixels; says so where it does not.
bool matchesReference(const QImage& picture, const std::string& path, double tolerance)
{
    const double difference = pictureDifference(picture, QImage(QString::fromStdString(path)));
    if (difference <= tolerance) return true;
    std::fprintf(stderr, "%s: %.3f %% of the pixels differ\n", path.c_str(), 100 * difference);
    return false;
}

constexpr std::array themes{std::pair(Appearance::Theme::light, "light"), std::pair(Appearance::Theme::dark, "dark")};

/// Takes the pictures of `scenes`, and gives whether each could be written and looks as it should.
template <class Scenes>
bool takePictures(const Scenes& scenes, const TourOptions& options, std::array<ContactSheet, themes.size()>& sheets)
{
    bool allWell = true;
    for (const auto& scene : scenes) {
        if (scene.name.find(options.only) == std::string::npos) continue;
        for (std::size_t index = 0; index < themes.size(); ++index) {
            const auto [theme, suffix] = themes.at(index);
            const QImage picture = pictureOf(scene, theme, {options.width, options.height});
            const std::string name = scene.name + "-" + suffix + ".png";
            allWell &= picture.save(QString::fromStdString(options.folder + "/" + name));
            if (!options.references.empty())
                allWell &= matchesReference(picture, options.references + "/" + name, tolerated(scene));
            sheets.at(index).add(picture);
        }
    }
    return allWell;
}

bool takeTour(const TourOptions& options)
{
    std::array<ContactSheet, themes.size()> sheets;
    bool allWell = takePictures(allScenes(), options, sheets);
    allWell &= takePictures(movingScenes(), options, sheets);
    for (std::size_t index = 0; index < themes.size(); ++index)
        allWell &= sheets.at(index).save(options.folder + "/all-" + themes.at(index).second + ".png");
    return allWell;
}

} // namespace
} // namespace vorn::testing

int main(int argc, char** argv)
{
    vorn::testing::TourOptions options;
    CLI::App app(
        "Takes a picture of every screen in every phase, light and dark, on a made-up chat; and one of all of them.",
        "vorn-tour");
    app.add_option("folder", options.folder, "where the pictures go")->required();
    app.add_option("--width", options.width, "of the window")->capture_default_str();
    app.add_option("--height", options.height, "of the window")->capture_default_str();
    app.add_option("--only", options.only, "pictures whose name holds this");
    app.add_option("--compare", options.references, "a folder of pictures that these have to look like");
    CLI11_PARSE(app, argc, argv);

    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("QT_QUICK_BACKEND", "software", 0);
    int qtArguments = 1;
    const QGuiApplication application(qtArguments, argv);
    ::testing::GTEST_FLAG(throw_on_failure) = true;
    std::filesystem::create_directories(options.folder);
    return vorn::testing::takeTour(options) ? 0 : 1;
}
