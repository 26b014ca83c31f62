#include "tests/Tools/Terminal/TerminalFixture.h"

#include "VornMacCore/Client/APIConfiguration.h"
#include "VornMacCore/Client/InMemoryTokenStore.h"
#include "VornMacCore/Client/KeychainTokenStore.h"
#include "VornMacCore/Wire/Application.h"
#include "tests/Tools/Terminal/QRReader.h"
#include "tests/support/MessagesFixture.h"

#include <algorithm>
#include <chrono>
#include <sstream>
#include <stdexcept>

#include <nlohmann/json.hpp>
#include <poll.h>

namespace vorn::testing {
namespace {

std::vector<std::string> serviceArguments(const std::vector<std::string>& options, int port)
{
    std::vector<std::string> arguments = {"--port", std::to_string(port)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    if (std::ranges::find(options, "--delay") == options.end()) arguments.insert(arguments.end(), {"--delay", "0.2"});
    return arguments;
}

/// The lines of the last code in `text`, which may not yet be complete.
std::vector<std::string> lastCode(const std::string& text)
{
    std::vector<std::string> code;
    bool growing = false;
    std::istringstream stream(text.substr(0, text.rfind('\n') + 1)); // whole lines
    for (std::string line; std::getline(stream, line);) {
        if (line.ends_with('\r')) line.pop_back(); // a terminal's
        const bool isCode = line.starts_with("█") || line.starts_with("\x1B[38");
        if (isCode && !growing) code.clear();
        if (isCode) code.push_back(line);
        growing = isCode;
    }
    return code;
}

std::string newestCode(const std::function<std::string()>& shown, const std::string& seen)
{
    std::string code;
    waitUntil(
        [&] {
            const auto lines = lastCode(shown());
            if (!lines.empty()) code = ScreenImage(lines, ScreenImage::Blocks::light).read();
            return !code.empty() && code != seen;
        },
        "a code in " + shown());
    return code;
}

} // namespace

void waitUntil(const std::function<bool()>& condition, const std::string& what)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) throw std::runtime_error("timed out waiting for " + what);
        poll(nullptr, 0, 2); // leaves the processor to the other programs
    }
}

Sandbox::Sandbox(const std::vector<std::string>& options, int port)
    : program_(SANDBOX_PROGRAM, serviceArguments(options, port)), http_(HTTPSession::make())
{
    waitUntil([this] { return program_.output().ends_with('\n'); }, "the service: " + program_.errors());
    url_ = program_.output();
    url_.pop_back();
}

int Sandbox::port() const
{
    return std::stoi(url_.substr(url_.rfind(':') + 1));
}

void Sandbox::waitForLog(const std::string& line) const
{
    waitUntil([&] { return log().find(line) != std::string::npos; }, line);
}

std::string Sandbox::post(const std::string& path, const std::string& json) const
{
    Program phone("/usr/bin/curl", {"--silent", "--fail-with-body", "--header", "Content-Type: application/json",
                                    "--data", json, url_ + path});
    if (phone.exitCode() != 0) throw std::runtime_error(path + ": " + phone.output());
    return phone.output();
}

std::string Sandbox::scan(const std::string& qrPayload) const
{
    const std::string answer = post("/phone/links/scan", nlohmann::json{{"qrPayload", qrPayload}}.dump());
    return nlohmann::json::parse(answer).at("linkId");
}

void Sandbox::approve(const std::string& linkId) const
{
    post("/phone/links/" + linkId + "/approve", R"({"userId":"usr_1"})");
}

void Sandbox::decline(const std::string& linkId) const
{
    post("/phone/links/" + linkId + "/reject", "{}");
}

StoredSession Sandbox::link()
{
    const VornAPI api(APIConfiguration::resolve(std::nullopt, url_), http_, std::make_shared<InMemoryTokenStore>());
    const DeviceLink link = main_.run(api.createDeviceLink({"Mac", "macos", "1.0.0", "macOS 14.0"}));
    approve(scan(link.qrPayload));
    return StoredSession(main_.run(api.pollDeviceLink(link.linkId, link.pollSecret)).session.value());
}

std::unique_ptr<Program> TerminalFixture::start(const std::string& url, std::vector<std::string> arguments,
                                                const Program::Environment& environment) const
{
    arguments.insert(arguments.end(), {"-VornAPIBaseURLOverride", url});
    return std::make_unique<Program>(TERMINAL_PROGRAM, std::move(arguments), environment);
}

TerminalWindow::TerminalWindow(const std::string& path, std::vector<std::string> arguments,
                               const Program::Environment& environment)
    : program_(terminal_, path, std::move(arguments), environment)
{
}

void TerminalWindow::waitFor(const std::string& text)
{
    std::size_t at = 0;
    const auto isThere = [&] { return (at = shown().find(text, seen_)) != std::string::npos; };
    waitUntil(isThere, text + " in " + shown());
    seen_ = at + text.size();
}

std::unique_ptr<TerminalWindow> TerminalFixture::startInWindow(const std::string& url,
                                                               std::vector<std::string> arguments) const
{
    arguments.insert(arguments.end(), {"-VornAPIBaseURLOverride", url});
    const Program::Environment environment = {{"TERM", "xterm-256color"}, {"NO_COLOR", ""}};
    return std::make_unique<TerminalWindow>(TERMINAL_PROGRAM, std::move(arguments), environment);
}

std::unique_ptr<TerminalWindow> TerminalFixture::shareInWindow(const std::string& url,
                                                               std::vector<std::string> arguments) const
{
    arguments.insert(arguments.end(), {"-VornMessagesDatabaseOverride", database().string()});
    return startInWindow(url, std::move(arguments));
}

std::unique_ptr<Program> TerminalFixture::share(const std::string& url, std::vector<std::string> arguments) const
{
    arguments.insert(arguments.end(), {"-VornMessagesDatabaseOverride", database().string()});
    return start(url, std::move(arguments));
}

std::filesystem::path TerminalFixture::database() const
{
    const auto path = folder / "chat.db";
    if (std::filesystem::exists(path)) return path;
    MessagesFixture messages(path);
    messages.assistantChat();
    for (int pair = 0; pair < 4; ++pair) {
        messages.message({.text = "Find me a dinner spot", .isFromMe = std::int64_t{1}});
        messages.message({.text = "message-canary"});
    }
    messages.checkpoint();
    return path;
}

std::vector<std::string> TerminalFixture::leftovers() const
{
    std::vector<std::string> found;
    for (const std::string& name : folder.names())
        if (name.starts_with("vorn-messages-") || name.starts_with("vorn-nimbrel-")) found.push_back(name);
    return found;
}

nlohmann::json lastState(const Program& program, const std::string& name)
{
    nlohmann::json last;
    std::istringstream lines(program.output());
    for (std::string line; std::getline(lines, line);) {
        const auto state = nlohmann::json::parse(line);
        if (state.contains(name)) last = state.at(name);
    }
    return last;
}

std::string TerminalFixture::codeOn(const Program& program, const std::string& seen)
{
    return newestCode([&] { return program.errors(); }, seen);
}

std::string TerminalFixture::codeOn(const TerminalWindow& window, const std::string& seen)
{
    return newestCode([&] { return window.shown(); }, seen);
}

void TerminalFixture::waitForLine(const Program& program, const std::string& text)
{
    waitUntil([&] { return program.errors().find(text + "\n") != std::string::npos; }, text);
}

std::string TerminalFixture::errorsBesideTheWait(const Program& program)
{
    constexpr std::string_view line = "Waiting for your keychain…\n";
    std::string result = program.errors();
    if (const auto at = result.find(line); at != std::string::npos) result.erase(at, line.size());
    return result;
}

void LinkedFixture::link(Sandbox& sandbox) const
{
    KeychainTokenStore(bundleIdentifier(), KeychainTokenStore::sessionAccount).save(sandbox.link());
}

std::optional<StoredSession> LinkedFixture::kept()
{
    return KeychainTokenStore(bundleIdentifier(), KeychainTokenStore::sessionAccount).load();
}

} // namespace vorn::testing
