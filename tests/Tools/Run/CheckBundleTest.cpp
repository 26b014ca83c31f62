// scripts/check-bundle on programs for macOS, made here with LLVM's linker and read with LLVM's otool if there is no
// other. Debian has no codesign: a script of that name replaces it.
#include "tests/support/Program.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <memory>

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing::Program;

class BundleFixture {
public:
    BundleFixture()
    {
        std::filesystem::create_directories(folder_ / "Vorn.app/Contents/MacOS");
        std::filesystem::create_directories(folder_ / "Vorn.app/Contents/Frameworks");
        std::filesystem::create_directories(folder_ / "bin");
        testing::writeFile(folder_ / "library.c", "int answer(void) { return 42; }\n");
        testing::writeFile(folder_ / "program.c", "int answer(void); int main(void) { return answer(); }\n");
        signatureHolds(true);
        promise("13.3");
    }

    /// Sets the first macOS that the bundle claims to run on. Programs linked here run on 13.3.
    void promise(const std::string& version) const
    {
        testing::writeFile(folder_ / "Vorn.app/Contents/Info.plist",
                           "<plist><dict><key>LSMinimumSystemVersion</key><string>" + version +
                               "</string></dict></plist>\n");
    }

    void signatureHolds(bool holds) const
    {
        const auto path = folder_ / "bin/codesign";
        testing::writeFile(path,
                           holds ? "#!/bin/sh\nexit 0\n" : "#!/bin/sh\necho 'sealed resource missing' >&2\nexit 1\n");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }

    /// Links a program that loads a library known by `name` and looks for libraries in `folder`.
    void program(const std::string& name, const std::string& folder) const
    {
        shell(
            fmt::format("cd {} && target='--target=x86_64-apple-macos13.3 -c' && link='-arch x86_64 -platform_version "
                        "macos 13.3 13.3' && {} $target library.c && {} $target program.c && {} $link -dylib library.o "
                        "-install_name {} -o library.dylib && {} $link -rpath {} program.o library.dylib -o "
                        "Vorn.app/Contents/MacOS/Vorn",
                        folder_.path().string(), CLANG, CLANG, MACHO_LINKER, name, MACHO_LINKER, folder));
    }

    void carryLibrary(const std::string& name) const
    {
        std::filesystem::copy_file(folder_ / "library.dylib", folder_ / ("Vorn.app/Contents/Frameworks/" + name));
    }

    std::unique_ptr<Program> check() const
    {
        const std::string path = "PATH=" + (folder_ / "bin").string() + ":" + std::getenv("PATH");
        return std::make_unique<Program>("/usr/bin/env",
                                         std::vector<std::string>{path, "python3", CHECK_BUNDLE, folder_ / "Vorn.app"});
    }

private:
    static void shell(const std::string& line)
    {
        Program program("/bin/sh", {"-c", line});
        EXPECT_EQ(program.exitCode(), 0) << program.errors();
    }

    testing::TemporaryFolder folder_;
};

TEST(CheckBundle, AcceptsLibrariesOfTheSystemAndOfTheBundle)
{
    const BundleFixture fix;
    fix.program("@rpath/libanswer.dylib", "@executable_path/../Frameworks");
    fix.carryLibrary("libanswer.dylib");
    const auto checked = fix.check();
    EXPECT_EQ(checked->exitCode(), 0) << checked->errors();
    EXPECT_EQ(checked->output(), "signature: holds\n"
                                 "libraries: all of 2 programs and libraries stay with the bundle and the system\n"
                                 "versions: all of 2 programs and libraries run on macOS 13.3\n");
}

TEST(CheckBundle, NamesWhatIsForALaterMacOSThanTheBundle)
{
    const BundleFixture fix;
    fix.program("@rpath/libanswer.dylib", "@executable_path/../Frameworks");
    fix.carryLibrary("libanswer.dylib");
    fix.promise("13.2.1");
    const auto checked = fix.check();
    EXPECT_EQ(checked->exitCode(), 1) << checked->errors();
    EXPECT_THAT(checked->output(), HasSubstr("versions: Contents/Frameworks/libanswer.dylib needs macOS 13.3\n"
                                             "versions: Contents/MacOS/Vorn needs macOS 13.3\n"
                                             "versions: NOT all of 2 programs and libraries run on macOS 13.2.1\n"));
}

TEST(CheckBundle, NamesLibrariesOfHomebrewAndWhereTheyAreLookedFor)
{
    const BundleFixture fix;
    fix.program("/opt/homebrew/opt/fmt/lib/libfmt.dylib", "/usr/local/lib");
    const auto checked = fix.check();
    EXPECT_EQ(checked->exitCode(), 1) << checked->errors();
    EXPECT_THAT(checked->output(),
                HasSubstr("libraries: Contents/MacOS/Vorn needs /opt/homebrew/opt/fmt/lib/libfmt.dylib\n"));
    EXPECT_THAT(checked->output(), HasSubstr("Vorn needs /usr/local/lib (a folder to look in)\n"));
}

TEST(CheckBundle, NamesLibrariesThatTheBundleLacks)
{
    const BundleFixture fix;
    fix.program("@rpath/libanswer.dylib", "@executable_path/../Frameworks");
    const auto checked = fix.check();
    EXPECT_EQ(checked->exitCode(), 1) << checked->errors();
    EXPECT_THAT(checked->output(), HasSubstr("Vorn needs @rpath/libanswer.dylib, which is not in the bundle\n"));
}

TEST(CheckBundle, SaysWhatIsWrongWithTheSignature)
{
    const BundleFixture fix;
    fix.program("/usr/lib/libanswer.dylib", "@loader_path");
    fix.signatureHolds(false);
    const auto checked = fix.check();
    EXPECT_EQ(checked->exitCode(), 1) << checked->errors();
    EXPECT_THAT(checked->output(), HasSubstr("signature: sealed resource missing\nsignature: does NOT hold\n"));
    EXPECT_THAT(checked->output(), Not(HasSubstr("NOT all")));
}

} // namespace
} // namespace vorn
