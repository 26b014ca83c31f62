#include "tests/VornMac/Tour/ContactSheet.h"
#include "tests/VornMac/Tour/PictureDifference.h"
#include "tests/VornMac/Tour/Pictures.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

#include <QGuiApplication>

namespace vorn::testing {
namespace {

struct TourOptions {
    std::string folder;
    int width = 1180;
    int height = 760;
    std::string only;
    std::string references; ///< empty: no comparison
};

/// Whether `picture` matches its reference except for a share of its pixels; prints a mismatch.
bool matchesReference(const QImage& picture, const std::string& path, double tolerance)
{
    const double difference = pictureDifference(picture, QImage(QString::fromStdString(path)));
    if (difference <= tolerance) return true;
    std::fprintf(stderr, "%s: %.3f %% of the pixels differ\n", path.c_str(), 100 * difference);
    return false;
}

/// Writes `picture` unless it matches its reference. False if it does not match, or cannot be written.
bool keep(const QImage& picture, const std::string& name, double tolerance, const TourOptions& options)
{
    const bool compares = !options.references.empty();
    if (compares && matchesReference(picture, options.references + "/" + name, tolerance)) return true;
    return picture.save(QString::fromStdString(options.folder + "/" + name)) && !compares;
}

bool takeTour(const TourOptions& options)
{
    std::array<ContactSheet, themes.size()> sheets;
    bool allWell = true;
    for (const Picture& each : allPictures()) {
        if (each.name.find(options.only) == std::string::npos) continue;
        const Themed pictures = each.take({options.width, options.height});
        for (std::size_t index = 0; index < themes.size(); ++index) {
            const QImage& picture = pictures.at(index);
            allWell &= keep(picture, each.name + "-" + themes.at(index).second + ".png", each.tolerance, options);
            if (options.references.empty()) sheets.at(index).add(picture);
        }
    }
    for (std::size_t index = 0; index < themes.size(); ++index)
        allWell &= sheets.at(index).save(options.folder + "/all-" + themes.at(index).second + ".png");
    return allWell;
}

} // namespace
} // namespace vorn::testing

int main(int argc, char** argv)
{
    vorn::testing::TourOptions options;
    CLI::App app("Takes a picture of every screen in every phase, light and dark, on a made-up chat; and one of all of "
                 "them.\nWith "
                 "--compare, writes only those that look different.",
                 "vorn-tour");
    app.add_option("folder", options.folder, "where the pictures go")->required();
    app.add_option("--width", options.width, "the window's width")->capture_default_str();
    app.add_option("--height", options.height, "the window's height")->capture_default_str();
    app.add_option("--only", options.only, "pictures whose name contains this");
    app.add_option("--compare", options.references, "a folder of reference pictures to match");
    CLI11_PARSE(app, argc, argv);

    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("QT_QUICK_BACKEND", "software", 0);
    int qtArguments = 1;
    const QGuiApplication application(qtArguments, argv);
    QCoreApplication::setApplicationVersion("1.0.0");
    ::testing::GTEST_FLAG(throw_on_failure) = true;
    std::filesystem::create_directories(options.folder);
    return vorn::testing::takeTour(options) ? 0 : 1;
}
