#include "NimbrelExportKit/Messages/UsersDatabase.h"
#include "Platform/Base/Memory.h"
#include "VornMac/Application/CommandLine.h"
#include "VornMac/Application/DisplayWatch.h"
#include "VornMac/Application/ProcessStart.h"
#include "VornMac/Application/QuitWatch.h"
#include "VornMac/Application/VornMacApp.h"
#include "VornMac/Text/ErrorText.h"

#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <utility>

#include <QGuiApplication>

namespace {

constexpr int wrongArguments = 2;

void complain(const std::string& text)
{
    std::fprintf(stderr, "VornMac: %s\n", text.c_str());
}

int run(vorn::QuitWatch& quitWatch, vorn::CommandLine& line)
{
    vorn::VornMacApp::describe();
    std::optional<vorn::DisplayWatch> displayWatch(std::in_place);
    const QGuiApplication application(line.count(), line.values());
    displayWatch.reset();
    try {
        return vorn::VornMacApp(quitWatch, line.defaults()).run();
    } catch (const vorn::NoHomeFolder& error) {
        complain(vorn::errorText(error).text);
        return 1;
    } catch (const std::exception& error) {
        complain(vorn::unexpectedProblem + std::string(error.what()) + ".");
        return 1;
    }
}

} // namespace

int main(int argc, char** argv)
{
    vorn::memory::keepPrivate();
    vorn::CommandLine line(argc, argv);
    if (const auto answer = line.answer()) {
        std::fputs(answer->c_str(), stdout);
        return 0;
    }
    if (const auto mistake = line.mistake(); mistake && vorn::ProcessStart::current().isFromShell()) {
        complain(*mistake + "\nTry VornMac --help.");
        return wrongArguments;
    }
    vorn::QuitWatch quitWatch; // before any thread starts
    return run(quitWatch, line);
}
