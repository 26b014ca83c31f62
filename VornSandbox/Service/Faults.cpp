#include "VornSandbox/Service/Faults.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <regex>
#include <thread>

namespace vorn::sandbox {
namespace {

using nlohmann::json;

constexpr auto slowBy = std::chrono::seconds(3);
constexpr auto badURL = "file:///part";

struct NamedEffect {
    std::string_view name;
    Fault::Effect effect;
    std::vector<std::string_view> operations{}; ///< those it applies to; all if empty
};

const std::array effects{
    NamedEffect{"drop", Fault::Effect::drop},
    NamedEffect{"hang", Fault::Effect::hang},
    NamedEffect{"garbage", Fault::Effect::garbage},
    NamedEffect{"slow", Fault::Effect::slow},
    NamedEffect{"no-asset", Fault::Effect::noAsset, {"create-submission"}},
    NamedEffect{"bad-url", Fault::Effect::badURL, {"create-submission", "part-urls"}},
    NamedEffect{"truncate", Fault::Effect::truncate},
};

bool readEffect(const std::string& text, Fault& fault)
{
    if (const auto status = wholeNumber(text)) {
        fault.status = static_cast<int>(*status);
        return true;
    }
    const auto named = std::ranges::find(effects, text, &NamedEffect::name);
    if (named == effects.end()) return false;
    fault.effect = named->effect;
    return named->operations.empty() || std::ranges::count(named->operations, fault.operation) > 0;
}

Answer statusAnswer(int status)
{
    if (status == 204 || status == 304) return {.status = status}; // these have no body
    return {.status = status,
            .body = fmt::format(R"({{"message":"The sandbox was told to answer {}.","code":"fault"}})", status)};
}

/// The parts are in the answer itself or, if it opens a submission, in its asset.
void spoilFirstURL(json& body)
{
    json& holder = body.contains("assets") ? body["assets"][0] : body;
    if (!holder["parts"].empty()) holder["parts"][0]["url"] = badURL;
}

} // namespace

std::optional<Fault> Fault::parse(std::string_view text)
{
    static const std::regex form("([a-z-]+)=([a-z-]+|[2-5][0-9]{2})(?:x([1-9][0-9]{0,17}))?(?:@([1-9][0-9]{0,17}))?");
    std::cmatch parts;
    if (!std::regex_match(text.data(), text.data() + text.size(), parts, form)) return std::nullopt;
    Fault fault{
        .operation = parts.str(1), .from = wholeNumber(parts.str(4)).value_or(1), .times = wholeNumber(parts.str(3))};
    const bool isKnown = std::ranges::count(operations, fault.operation) > 0;
    return isKnown && readEffect(parts.str(2), fault) ? std::optional(fault) : std::nullopt;
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

std::optional<Answer> answerInstead(const Fault& fault)
{
    switch (fault.effect) {
    case Fault::Effect::status: return statusAnswer(fault.status);
    case Fault::Effect::drop: return Answer{.instead = Answer::Instead::drop};
    case Fault::Effect::hang: return Answer{.instead = Answer::Instead::hang};
    case Fault::Effect::garbage: return Answer{.body = "{\"status\": \xff<html>"};
    case Fault::Effect::slow: std::this_thread::sleep_for(slowBy); return std::nullopt;
    case Fault::Effect::noAsset:
    case Fault::Effect::badURL:
    case Fault::Effect::truncate: return std::nullopt;
    }
    return std::nullopt;
}

void spoil(Answer& answer, const Fault& fault)
{
    if (fault.effect == Fault::Effect::truncate) answer.instead = Answer::Instead::truncate;
    if (fault.effect != Fault::Effect::noAsset && fault.effect != Fault::Effect::badURL) return;
    json body = json::parse(answer.body);
    if (fault.effect == Fault::Effect::noAsset) body["assets"] = json::array();
    if (fault.effect == Fault::Effect::badURL) spoilFirstURL(body);
    answer.body = body.dump();
}

} // namespace vorn::sandbox
