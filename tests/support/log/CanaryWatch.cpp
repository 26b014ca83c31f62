#include "Platform/Base/Log.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <string_view>

#include <gtest/gtest.h>

namespace vorn::testing {
namespace {

/// Tests put the word "canary" into every secret: tokens, poll secrets, QR payloads, presigned queries, handles. A line
/// of the log with that word, in any case, fails the running test. No line reaches the system's log.
class CanaryWatch : public LogSink {
public:
    void write(std::string_view /*subsystem*/, std::string_view category, std::string_view line) override
    {
        if (holdsCanary(line) || holdsCanary(category)) ADD_FAILURE() << "a secret was logged: " << line;
    }

private:
    static bool holdsCanary(std::string_view text)
    {
        constexpr std::string_view word = "canary";
        const auto same = [](char letter, char ofWord) {
            return std::tolower(static_cast<unsigned char>(letter)) == ofWord;
        };
        return std::search(text.begin(), text.end(), word.begin(), word.end(), same) != text.end();
    }
};

/// Before main(): linking this file installs the watch.
[[maybe_unused]] const bool watching = [] {
    setLogSink(std::make_shared<CanaryWatch>());
    return true;
}();

} // namespace
} // namespace vorn::testing
