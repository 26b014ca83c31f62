#include "tests/Platform/Keychain/FakeSecretService.h"
#include "tests/Platform/Keychain/TestBus.h"
#include "tests/VornMac/Application/ApplicationFixture.h"

#include <chrono>
#include <csignal>

#include <gmock/gmock.h>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Logs each change of its visibility to standard error.
const std::string window = R"(
import QtQuick
Window {
    property var model
    property string shown: ["hidden", "automatic", "windowed", "minimized", "maximized", "fullScreen"][visibility]
    onShownChanged: console.log(shown)
    onClosing: console.log("closing")
    Timer { interval: 1; running: true; onTriggered: @what@ }
})";

std::string windowThat(const std::string& doesAtOnce)
{
    std::string source = window;
    return source.replace(source.find("@what@"), 6, doesAtOnce);
}

struct ApplicationProgram : ::testing::Test {
    ApplicationFixture fix;

    /// Waits for the program's end, which must come within five seconds.
    static int exitCodeOf(Program& program)
    {
        const auto begin = std::chrono::steady_clock::now();
        const int code = program.exitCode();
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s) << "it was killed for hanging";
        return code;
    }
};

TEST_F(ApplicationProgram, EndsByASignalAndLeavesNothing)
{
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(number);
        const ServiceProgram service;
        const auto program = fix.start(service.url());
        service.waitFor("links");
        program->signal(number);
        EXPECT_EQ(exitCodeOf(*program), 128 + number);
        EXPECT_THAT(program->errors(), IsEmpty());
        EXPECT_THAT(fix.leftovers(), IsEmpty());
    }
}

TEST_F(ApplicationProgram, EndsWhileItsServiceDoesNotAnswer)
{
    const ServiceProgram service;
    service.freeze();
    const auto program = fix.startWith(windowThat("{ model.start(); console.log('asked') }"),
                                       {"-VornAPIBaseURLOverride", service.url()});
    fix.waitForLine(*program, "qml: asked");
    program->signal(SIGTERM);
    EXPECT_EQ(exitCodeOf(*program), 128 + SIGTERM);
    EXPECT_THAT(fix.leftovers(), IsEmpty());
}

TEST_F(ApplicationProgram, ShowsItsWindowAndEndsWhileItsKeychainAsks)
{
    const TestBus bus;
    const FakeSecretService service(bus.address(), FakeSecretService::Fault::hangingDialog);
    const auto program =
        fix.startWith(windowThat("{ model.restorePhaseChanged.connect(() => console.log(model.keychain.status.text));"
                                 "model.start(); console.log('shown') }"),
                      {}, {{"DBUS_SESSION_BUS_ADDRESS", bus.address()}});
    fix.waitForLine(*program, "qml: shown");
    fix.waitForLine(*program, "qml: Waiting for your keychain…");
    EXPECT_EQ(service.dialogs(), 1);
    program->signal(SIGTERM);
    EXPECT_EQ(exitCodeOf(*program), 128 + SIGTERM);
    EXPECT_THAT(fix.leftovers(), IsEmpty());
}

TEST_F(ApplicationProgram, EndsWithItsWindow)
{
    const auto program = fix.startWith(windowThat("close()"));
    EXPECT_EQ(exitCodeOf(*program), 0);
    EXPECT_THAT(program->errors(), HasSubstr("qml: closing\n"));
    EXPECT_THAT(fix.leftovers(), IsEmpty());
}

TEST_F(ApplicationProgram, EndsWhenQMLQuits)
{
    const auto program = fix.startWith(windowThat("Qt.quit()"));
    EXPECT_EQ(exitCodeOf(*program), 0);
    EXPECT_THAT(fix.leftovers(), IsEmpty());
}

TEST_F(ApplicationProgram, ASecondStartBringsTheFirstToTheFront)
{
    const auto first = fix.startWith(windowThat("showMinimized()"));
    fix.waitForLine(*first, "qml: minimized");
    const auto second = fix.startWith(windowThat("console.log('never')"));
    EXPECT_EQ(exitCodeOf(*second), 0);
    EXPECT_THAT(second->errors(), IsEmpty());
    EXPECT_THAT(first->errors(), ::testing::EndsWith("\nqml: windowed\n"));
    first->signal(SIGTERM);
    EXPECT_EQ(exitCodeOf(*first), 128 + SIGTERM);
}

TEST_F(ApplicationProgram, StartsAnewOnceTheFirstHasEnded)
{
    for (int round = 0; round < 2; ++round) {
        const auto program = fix.startWith(windowThat("console.log('ready')"));
        fix.waitForLine(*program, "qml: ready");
        program->signal(SIGTERM);
        EXPECT_EQ(exitCodeOf(*program), 128 + SIGTERM);
    }
}

TEST_F(ApplicationProgram, ComesBackWhereItWas)
{
    const auto first = fix.startWith(windowThat("{ x = 11; y = 22; width = 1111; height = 777; close() }"));
    EXPECT_EQ(exitCodeOf(*first), 0);
    const auto second = fix.startWith(windowThat("{ console.log([x, y, width, height]); Qt.quit() }"));
    EXPECT_EQ(exitCodeOf(*second), 0);
    EXPECT_THAT(second->errors(), HasSubstr("[11,22,1111,777]"));
}

TEST_F(ApplicationProgram, ReadsDefaultsFromItsCommandLine)
{
    const std::string look = "{ console.log(Appearance.isDark, Appearance.reducesMotion); Qt.quit() }";
    const auto dark =
        fix.startWith("import Vorn.System" + windowThat(look), {"-VornAppearance", "dark", "-VornReduceMotion", "1"});
    EXPECT_EQ(exitCodeOf(*dark), 0);
    EXPECT_THAT(dark->errors(), HasSubstr("qml: true true\n"));
    const auto light =
        fix.startWith("import Vorn.System" + windowThat(look), {"-VornAppearance", "light", "-VornReduceMotion", "NO"});
    EXPECT_EQ(exitCodeOf(*light), 0);
    EXPECT_THAT(light->errors(), HasSubstr("qml: false false\n"));
}

TEST_F(ApplicationProgram, SaysWhatItsWindowLacks)
{
    const auto missingModule = fix.startWith("import QtQuick\nimport Vorn.Missing\nWindow {}");
    EXPECT_EQ(exitCodeOf(*missingModule), 1);
    EXPECT_THAT(missingModule->errors(), HasSubstr("Main.qml:2:1: module \"Vorn.Missing\" is not installed"));
    const auto missingProperty = fix.startWith("import QtQuick\nWindow { required property int missing }");
    EXPECT_EQ(exitCodeOf(*missingProperty), 1);
    EXPECT_THAT(missingProperty->errors(), HasSubstr("Required property missing was not initialized"));
    EXPECT_THAT(fix.leftovers(), IsEmpty());
}

TEST_F(ApplicationProgram, RejectsArgumentsThatNobodyKnows)
{
    const auto program = fix.start("http://127.0.0.1:9", {"chat.db"});
    EXPECT_EQ(exitCodeOf(*program), 2);
    EXPECT_EQ(program->errors(), "VornMac: There is no argument chat.db\nTry VornMac --help.\n");
    const auto misspelt = fix.start("http://127.0.0.1:9", {"-VornMesagesDatabaseOverride", "chat.db"});
    EXPECT_EQ(exitCodeOf(*misspelt), 2);
    EXPECT_THAT(misspelt->errors(), HasSubstr("There is no -VornMesagesDatabaseOverride, only "));
    const auto nowhere = fix.start("htp://127.0.0.1", {});
    EXPECT_EQ(exitCodeOf(*nowhere), 2);
    EXPECT_THAT(nowhere->errors(), HasSubstr("-VornAPIBaseURLOverride must be an https address"));
}

TEST_F(ApplicationProgram, StartsWhateverItsLineHoldsWhereTheSystemOpensIt)
{
    const auto process = fix.open("http://127.0.0.1:9", {"chat.db", "-VornAppearance", "blue", "-psn_0_4711"});
    if (!process) GTEST_SKIP() << "here the first process is nobody's parent";
    const auto end = [&](const int* number) { kill(*process, *number); };
    constexpr int kills = SIGKILL;
    std::unique_ptr<const int, decltype(end)> unlessItEnds(&kills, end);
    waitUntil([&] { return !fix.leftovers().empty(); }, "its lock");
    kill(*process, SIGTERM);
    waitUntil([&] { return fix.leftovers().empty(); }, "its end");
    static_cast<void>(unlessItEnds.release());
    EXPECT_THAT(fix.errorsOfOpened(), IsEmpty());
}

TEST_F(ApplicationProgram, LeadsToTheTerminalWhereThereIsNoDisplay)
{
    struct Case {
        const char* name;
        Program::Environment environment;
    };
    for (const Case& each : {Case{"none", {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"QT_QPA_PLATFORM", ""}}},
                             Case{"one that is gone", {{"DISPLAY", ":4711"}, {"QT_QPA_PLATFORM", "xcb"}}},
                             Case{"an unknown kind", {{"QT_QPA_PLATFORM", "paper"}}}}) {
        SCOPED_TRACE(each.name);
        const auto program = fix.start("http://127.0.0.1:9", {}, each.environment);
        EXPECT_EQ(exitCodeOf(*program), 1);
        EXPECT_EQ(program->errors(),
                  "VornMac: No window can be shown here. In a terminal, vorn-terminal does the same.\n");
        EXPECT_THAT(fix.leftovers(), IsEmpty());
        const auto mistaken = fix.start("http://127.0.0.1:9", {"chat.db"}, each.environment);
        EXPECT_EQ(exitCodeOf(*mistaken), 2) << "arguments come first";
    }
}

TEST_F(ApplicationProgram, SaysThatItsUserHasNoHome)
{
    const auto program = fix.start("http://127.0.0.1:9", {}, {{"LD_PRELOAD", NO_USERS_MODULE}, {"HOME", ""}});
    EXPECT_EQ(exitCodeOf(*program), 1);
    EXPECT_EQ(program->errors(),
              "VornMac: This user has no home folder, so there is no Messages history here. HOME can name one.\n");
    EXPECT_THAT(fix.leftovers(), IsEmpty());
}

TEST_F(ApplicationProgram, TellsItsVersion)
{
    const auto program = fix.start("http://127.0.0.1:9", {"--version"});
    EXPECT_EQ(exitCodeOf(*program), 0);
    EXPECT_EQ(program->output(), "Vorn " VORN_VERSION "\n");
}

} // namespace
} // namespace vorn::testing
