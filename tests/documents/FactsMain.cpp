#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "NimbrelExportKit/Messages/TemporaryNames.h"
#include "VornMac/Composition/LiveServices.h"
#include "VornMac/Model/Timing.h"
#include "VornMac/Text/Consent.h"
#include "VornMacCore/Client/PartPlan.h"
#include "VornMacCore/Wire/Application.h"
#include "VornMacCore/Wire/JSONObject.h"
#include "tests/documents/ProblemTexts.h"
#include "tests/documents/WireFacts.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>

namespace {

using namespace std::chrono_literals;
using vorn::Clock;

std::int64_t seconds(Clock::Duration duration)
{
    return std::chrono::duration_cast<std::chrono::seconds>(duration).count();
}

/// In seconds.
nlohmann::ordered_json times()
{
    const vorn::Instant arrival{};
    vorn::DeviceLink link;
    link.expiresAt = "no time";
    vorn::SubmissionStatus submission;
    const auto everyOther = vorn::timing::nextReviewPoll(submission, 0s);
    submission.status = "review_pending";
    const auto everyReviewed = vorn::timing::nextReviewPoll(submission, 0s);
    int watched = 0;
    while (vorn::timing::nextReviewPoll(submission, std::chrono::seconds(watched))) ++watched;
    return {{"undated link", seconds(vorn::timing::pollDeadline(link, arrival) - arrival)},
            {"between codes", seconds(vorn::timing::codeInterval)},
            {"after a failed link", seconds(vorn::timing::linkFailureIsShown)},
            {"after a declined link", seconds(vorn::timing::declinedIsShown)},
            {"between reviews", seconds(everyOther.value())},
            {"between pending reviews", seconds(everyReviewed.value())},
            {"reviews", watched}};
}

} // namespace

/// Prints the facts that the documents state, as the programs have them: one JSON object, for the tests beside this
/// file.
int main()
try {
    const vorn::KeychainItem item = vorn::sessionItem();
    const vorn::KeychainItem itemOfTerminal = vorn::sessionItem(true, false);
    const nlohmann::ordered_json facts{
        {"texts", vorn::testing::problemTexts()},
        {"records", vorn::testing::wireRecords()},
        {"times", times()},
        {"places",
         {{"identifier", vorn::bundleIdentifier()},
          {"keychain account", item.account},
          {"item of the terminal", itemOfTerminal.service},
          {"snapshot", vorn::temporarynames::snapshot.prefix},
          {"archive", vorn::temporarynames::archive.prefix},
          {"consent", vorn::consentKey("")}}},
        {"limits",
         {{"part size", vorn::PartPlan::defaultPartSize},
          {"part window", vorn::PartPlan::windowSize},
          {"answer bytes", vorn::JSONObject::maxTextSize},
          {"answer depth", vorn::JSONObject::maxDepth},
          {"answer values", vorn::JSONObject::maxValues}}},
    };
    std::printf("%s\n", facts.dump(2).c_str());
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "vorn-facts: %s\n", error.what());
    return 1;
}
