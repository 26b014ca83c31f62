#include "VornSandbox/Service/FaultAnswers.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <thread>

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

} // namespace

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
