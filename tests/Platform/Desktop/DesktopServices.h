#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vorn::testing {

/// The services of a desktop on one bus, on a thread of their own. They record every call.
class DesktopServices {
public:
    enum class Kind {
        willing,
        refusing, ///< answer every call with an error
        silent,   ///< answer nothing
    };
    struct Options {
        Kind kind = Kind::willing;
        std::vector<std::string> names{notifications, logind, sessionManager};   ///< those on the bus
        std::vector<std::string> capabilities{"actions", "body", "body-markup"}; ///< of the notifications
    };
    static constexpr const char* notifications = "org.freedesktop.Notifications";
    static constexpr const char* logind = "org.freedesktop.login1";
    static constexpr const char* sessionManager = "org.gnome.SessionManager";

    /// Returns once the services are on the bus at `address`.
    explicit DesktopServices(const std::string& address);
    DesktopServices(const std::string& address, Options options);
    ~DesktopServices();
    DesktopServices(DesktopServices&&) = delete;

    /// Calls and the launcher's signals, as "Method(arguments)" in GVariant's text format.
    std::vector<std::string> calls() const;
    /// Whether a program holds one of logind's locks.
    bool isAwake() const;

    /// Sends the signals of a click on the notification `id`, to every program. An empty token is not sent.
    void click(std::uint32_t id, const std::string& action = "default", const std::string& token = "");

private:
    class Services;
    std::unique_ptr<Services> services_;
};

} // namespace vorn::testing
