#include "VornMac/Model/Describe.h"

#include "NimbrelExportKit/Records/NimbrelExportError.h"
#include "Platform/HTTP/URLError.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Upload/UploadError.h"

#include <filesystem>
#include <memory>
#include <stdexcept>

#include <gtest/gtest.h>

namespace vorn {
namespace {

using Code = URLError::Code;

struct Case {
    const char* name;
    std::shared_ptr<std::exception> error;
    const char* text;
};

template <class Error, class... Arguments>
std::shared_ptr<std::exception> an(Arguments&&... arguments)
{
    return std::make_shared<Error>(std::forward<Arguments>(arguments)...);
}

const std::vector<Case>& cases()
{
    static constexpr const char* unlinked = "Your Mac is no longer linked. Link it again.";
    static constexpr const char* elsewhere = "Vorn can't reach the server right now.";
    static const std::vector<Case> all = {
        {"offline", an<URLError>(Code::notConnectedToInternet), "You're offline. Vorn will retry."},
        {"cut", an<URLError>(Code::networkConnectionLost), "You're offline. Vorn will retry."},
        {"slow", an<URLError>(Code::timedOut), "The connection timed out. Vorn will retry."},
        {"refused", an<URLError>(Code::cannotConnectToHost), elsewhere},
        {"no such host", an<URLError>(Code::cannotFindHost), elsewhere},
        {"TLS", an<URLError>(Code::secureConnectionFailed), elsewhere},
        {"unknown", an<URLError>(Code::unknown), elsewhere},
        {"lane off", an<APIError>(APIError::HTTP{404, "no route", "x"}),
         "Nimbrel export isn't available yet. Check back soon."},
        {"message", an<APIError>(APIError::HTTP{409, "Not now.", {}}), "Not now."},
        {"no message", an<APIError>(APIError::HTTP{500, {}, {}}), "The server answered 500."},
        {"not signed in", an<APIError>(APIError::NotSignedIn{}), unlinked},
        {"expired", an<APIError>(APIError::SessionExpired{}), unlinked},
        {"changed", an<APIError>(APIError::SessionChanged{}), "You signed in again, so this step was stopped."},
        {"garbage", an<APIError>(APIError::InvalidResponse{}), "The server sent an answer Vorn could not read."},
        {"part", an<UploadError>(UploadError::PartRefused{3, 500}), "Part 3 of the upload failed (500)."},
        {"tag", an<UploadError>(UploadError::MissingETag{2}), "Part 2 of the upload was not acknowledged."},
        {"asset", an<UploadError>(UploadError::NoAsset{}), "The server opened no upload for the archive."},
        {"no database", an<NimbrelExportError>(NimbrelExportError::NoDatabase{}), "Messages isn't set up on this Mac."},
        {"busy", an<NimbrelExportError>(NimbrelExportError::SnapshotUnreadable{}),
         "Messages was busy. Try again in a moment."},
        {"no sentence", an<NimbrelExportError>(NimbrelExportError::AccessDenied{}), "Something went wrong."},
        {"any other", an<std::runtime_error>("std::bad_thing"), "Something went wrong."},
    };
    return all;
}

TEST(Describe, HasALineForEveryError)
{
    for (const Case& each : cases()) EXPECT_EQ(describe(*each.error), each.text) << each.name;
}

TEST(RewardText, NamesTheAmountWhereItIsKnown)
{
    EXPECT_EQ(rewardText(std::nullopt), "the quest reward");
    NimbrelState quest;
    EXPECT_EQ(rewardText(quest), "the quest reward");
    quest.quest.rewardUsd = 12.5;
    EXPECT_EQ(rewardText(quest), "$12.50");
}

} // namespace
} // namespace vorn
