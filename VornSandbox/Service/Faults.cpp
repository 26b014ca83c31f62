#include "VornSandbox/Service/Faults.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace vorn::sandbox {
namespace {

using nlohmann::json;

constexpr auto slowBy = std::chrono::seconds(3);
constexpr auto badURL = "file:///part";

Answer statusAnswer(int status)
{
    if (status == 204 || status == 304) return {.status = status}; // these have no body
    return {.status = status,
            .body = fmt::format(R"({{"message":"The sandbox was told to answer {}.","code":"fault"}})", status)};
}

void dropAssets(json& body)
{
    body["assets"] = json::array();
}

/// The parts stand in the answer itself or, when it opens a submission, in its asset.
void spoilFirstURL(json& body)
{
    json& holder = body.contains("assets") ? body["assets"][0] : body;
    if (!holder["parts"].empty()) holder["parts"][0]["url"] = badURL;
}

void change(Answer& answer, void (*how)(json&))
{
    json body = json::parse(answer.body);
    how(body);
    answer.body = body.dump();
}

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
    const auto number = wholeNumber(text);
    return number.value_or(0) > 0 ? number : std::nullopt;
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
    if (fault.effect == Fault::Effect::noAsset) change(answer, dropAssets);
    if (fault.effect == Fault::Effect::badURL) change(answer, spoilFirstURL);
    if (fault.effect == Fault::Effect::truncate) answer.instead = Answer::Instead::truncate;
}

} // namespace vorn::sandbox
