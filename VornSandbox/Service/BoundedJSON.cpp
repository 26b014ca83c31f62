#include "VornSandbox/Service/BoundedJSON.h"

#include <utility>

namespace vorn::sandbox {
namespace {

using nlohmann::json;

struct TooDeep {};

} // namespace

std::optional<json> parseJSON(std::string_view text, int deepest)
{
    const auto watch = [deepest](int depth, json::parse_event_t event, json&) {
        const bool opens = event == json::parse_event_t::object_start || event == json::parse_event_t::array_start;
        if (opens && depth >= deepest) throw TooDeep(); // a refusal by value would only leave this part out
        return true;
    };
    try {
        json document = json::parse(text, watch, false);
        return document.is_discarded() ? std::nullopt : std::optional(std::move(document));
    } catch (const TooDeep&) {
        return std::nullopt;
    }
}

} // namespace vorn::sandbox
