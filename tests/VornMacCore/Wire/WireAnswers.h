#pragma once

#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace vorn::testing {

/// A record that is received, with a good document that has every key.
struct WireAnswer {
    std::string record;
    std::string good;
    std::set<std::string> optional;             ///< keys that may be missing, as paths without indices: "quest.title"
    std::function<void(std::string_view)> read; ///< throws as `fromJSON` does
};

inline std::ostream& operator<<(std::ostream& out, const WireAnswer& answer)
{
    return out << answer.record;
}

/// One for each record that is received.
const std::vector<WireAnswer>& wireAnswers();

/// The good document of `record`.
const std::string& goodAnswer(const std::string& record);

} // namespace vorn::testing
