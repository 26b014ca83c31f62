#include "tests/VornMac/Application/ApplicationFixture.h"

#include <chrono>
#include <filesystem>
#include <sstream>
#include <stdexcept>

#include <poll.h>

namespace vorn::testing {

void waitUntil(const std::function<bool()>& condition, const std::string& what)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) throw std::runtime_error("timed out waiting for " + what);
        poll(nullptr, 0, 2); // leaves the processor to the other programs
    }
}

ApplicationFixture::ApplicationFixture()
{
    namespace fs = std::filesystem;
    fs::permissions(runtime_.path(), fs::perms::owner_all); // otherwise it is refused
}

Program::Environment ApplicationFixture::environment(const Program::Environment& added) const
{
    Program::Environment whole = added; // the first value of a name counts
    for (auto& entry : Program::Environment{{"TMPDIR", temporary_.path().native()},
                                            {"XDG_RUNTIME_DIR", runtime_.path().native()},
                                            {"XDG_CONFIG_HOME", configuration_.path().native()},
                                            {"DBUS_SESSION_BUS_ADDRESS", ""},
                                            {"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere/bus"},
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

std::optional<pid_t> ApplicationFixture::open(const std::string& url, std::vector<std::string> arguments) const
{
    // The inner shell becomes the application once the outer one has ended.
    const std::string becomes = R"(tries=0
        while read -r _ _ _ parent _ < /proc/$$/stat && [ "$parent" != 1 ] && [ $tries -lt 300 ]; do
          tries=$((tries + 1)); sleep 0.01
        done
        echo "$$ $parent" > "$0"; [ "$parent" = 1 ] && exec "$@")";
    const std::string opens = R"(sh -c "$BECOMES" "$@" 2> "$0" &)";
    arguments.insert(arguments.begin(), {"-c", opens, sources_ / "errors", sources_ / "process", APPLICATION_PROGRAM});
    arguments.insert(arguments.end(), {"-VornAPIBaseURLOverride", url});
    for (const char* name : {"errors", "process"}) writeFile(sources_ / name, "");
    Program("/bin/sh", std::move(arguments), environment({{"BECOMES", becomes}})).exitCode();
    const auto process = [&] { return readFile(sources_ / "process"); };
    waitUntil([&] { return process().ends_with("\n"); }, "the process");
    std::istringstream line(process());
    pid_t number = 0;
    pid_t parent = 0;
    line >> number >> parent;
    return parent == 1 ? std::optional(number) : std::nullopt;
}

std::string ApplicationFixture::errorsOfOpened() const
{
    return readFile(sources_ / "errors");
}

std::unique_ptr<Program> ApplicationFixture::startWith(const std::string& qml, std::vector<std::string> arguments,
                                                       const Program::Environment& added) const
{
    const auto file = sources_ / "Main.qml";
    writeFile(file, qml);
    arguments.push_back(file.native());
    return std::make_unique<Program>(WINDOW_PROGRAM, std::move(arguments), environment(added));
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
