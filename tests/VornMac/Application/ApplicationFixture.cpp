#include "tests/VornMac/Application/ApplicationFixture.h"

#include <chrono>
#include <filesystem>
#include <stdexcept>

#include <poll.h>

namespace vorn::testing {

void waitUntil(const std::function<bool()>& condition, const std::string& what)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) throw std::runtime_error("waited in vain for " + what);
        poll(nullptr, 0, 2); // leaves the processor to those who are waited for
    }
}

ApplicationFixture::ApplicationFixture()
{
    namespace fs = std::filesystem;
    fs::permissions(runtime_.path(), fs::perms::owner_all); // else it is not taken
}

Program::Environment ApplicationFixture::environment(const Program::Environment& added) const
{
    Program::Environment whole = added; // the first of a name counts
    for (auto& entry : Program::Environment{{"TMPDIR", temporary_.path().native()},
                                            {"XDG_RUNTIME_DIR", runtime_.path().native()},
                                            {"XDG_CONFIG_HOME", configuration_.path().native()},
                                            {"DBUS_SESSION_BUS_ADDRESS", ""},
                                            {"GSETTINGS_BACKEND", "memory"},
                                            {"QT_QPA_PLATFORM", "offscreen"},
                                            {"QT_QUICK_BACKEND", "software"},
                                            {"TSAN_OPTIONS", "ignore_noninstrumented_modules=1"}})
        whole.push_back(std::move(entry));
    return whole;
}

std::unique_ptr<Program> ApplicationFixture::start(const std::string& url, std::vector<std::string> arguments,
                                                   const Program::Environment& added) const
{
    arguments.insert(arguments.end(), {"-VornAPIBaseURLOverride", url});
    return std::make_unique<Program>(APPLICATION_PROGRAM, std::move(arguments), environment(added));
}

std::unique_ptr<Program> ApplicationFixture::startWith(const std::string& qml, std::vector<std::string> arguments) const
{
    const auto file = sources_ / "Main.qml";
    writeFile(file, qml);
    arguments.push_back(file.native());
    return std::make_unique<Program>(WINDOW_PROGRAM, std::move(arguments), environment());
}

void ApplicationFixture::waitForLine(const Program& program, const std::string& line)
{
    waitUntil([&] { return ("\n" + program.errors()).find("\n" + line + "\n") != std::string::npos; },
              line + " in " + program.errors());
}

std::vector<std::string> ApplicationFixture::leftovers() const
{
    std::vector<std::string> found;
    for (const std::string& name : temporary_.names())
        if (!name.starts_with("tsan.")) found.push_back(name);
    return found;
}

ServiceProgram::ServiceProgram() : program_(SANDBOX_PROGRAM, {"--port", "0"})
{
    waitUntil([this] { return program_.output().ends_with('\n'); }, "the service: " + program_.errors());
    url_ = program_.output();
    url_.pop_back();
}

void ServiceProgram::waitFor(const std::string& text) const
{
    waitUntil([&] { return program_.errors().find(text) != std::string::npos; }, text + " in " + program_.errors());
}

} // namespace vorn::testing
