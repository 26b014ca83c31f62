#include "VornSandbox/Service/FaultPlan.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace vorn::sandbox {
namespace {

constexpr std::array<std::pair<std::string_view, Fault::Effect>, 7> effects{{
    {"drop", Fault::Effect::drop},
    {"hang", Fault::Effect::hang},
    {"garbage", Fault::Effect::garbage},
    {"slow", Fault::Effect::slow},
    {"no-asset", Fault::Effect::noAsset},
    {"bad-url", Fault::Effect::badURL},
    {"truncate", Fault::Effect::truncate},
}};

std::optional<std::int64_t> positive(std::string_view text)
{
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 1) return std::nullopt;
    return number;
}

/// Takes what follows the last `mark` off the end of `text`; `fine` turns false when that is no positive number.
std::optional<std::int64_t> takeNumber(std::string_view& text, char mark, bool& fine)
{
    const auto at = text.rfind(mark);
    if (at == std::string_view::npos) return std::nullopt;
    const auto number = positive(text.substr(at + 1));
    text = text.substr(0, at);
    fine = fine && number.has_value();
    return number;
}

bool readEffect(std::string_view text, Fault& fault)
{
    const auto named = std::ranges::find(effects, text, [](const auto& effect) { return effect.first; });
    if (named != effects.end()) {
        fault.effect = named->second;
        return true;
    }
    const auto status = positive(text);
    fault.status = static_cast<int>(std::min<std::int64_t>(status.value_or(0), 1000));
    return fault.status >= 200 && fault.status <= 599;
}

/// Some effects spoil what only some operations answer.
bool suits(const Fault& fault)
{
    if (fault.effect == Fault::Effect::noAsset) return fault.operation == "create-submission";
    if (fault.effect == Fault::Effect::badURL) {
        return fault.operation == "create-submission" || fault.operation == "part-urls";
    }
    return true;
}

} // namespace

std::optional<Fault> Fault::parse(std::string_view text)
{
    const auto equals = text.find('=');
    if (equals == std::string_view::npos) return std::nullopt;
    Fault fault;
    fault.operation = text.substr(0, equals);
    std::string_view effect = text.substr(equals + 1);
    bool fine = std::ranges::find(operations, fault.operation) != operations.end();
    fault.from = takeNumber(effect, '@', fine).value_or(1);
    fault.times = takeNumber(effect, 'x', fine);
    fine = fine && readEffect(effect, fault) && suits(fault);
    return fine ? std::optional(fault) : std::nullopt;
}

std::optional<Fault> FaultPlan::next(const std::string& operation)
{
    const std::lock_guard lock(mutex_);
    const std::int64_t number = ++seen_[operation];
    for (const Fault& fault : faults_) {
        const bool begun = number >= fault.from;
        const bool over = fault.times && number - fault.from >= *fault.times;
        if (fault.operation == operation && begun && !over) return fault;
    }
    return std::nullopt;
}

} // namespace vorn::sandbox
