#include "VornMac/Text/ErrorText.h"

#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "NimbrelExportKit/Messages/UsersDatabase.h"
#include "Platform/HTTP/URLError.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Client/UploadError.h"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string_view>

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
        {"no words", an<APIError>(APIError::HTTP{429, "", {}}), ""},
        {"lane off, silently", an<APIError>(APIError::HTTP{404, {}, {}}),
         "Nimbrel export isn't available yet. Check back soon."},
        {"redirect", an<APIError>(APIError::HTTP{302, {}, "code alone"}), "The server answered 302."},
        {"message", an<APIError>(APIError::HTTP{409, "Not now.", {}}), "Not now."},
        {"no message", an<APIError>(APIError::HTTP{500, {}, {}}), "The server answered 500."},
        {"not signed in", an<APIError>(APIError::NotSignedIn{}), unlinked},
        {"expired", an<APIError>(APIError::SessionExpired{}), unlinked},
        {"changed", an<APIError>(APIError::SessionChanged{}), "You signed in again, so this step was stopped."},
        {"garbage", an<APIError>(APIError::InvalidResponse{}), "The server sent an answer Vorn could not read."},
        {"part", an<UploadError>(UploadError::PartRefused{3, 500}), "Part 3 of the upload failed (500)."},
        {"late part", an<UploadError>(UploadError::PartRefused{1'234'567, 0}),
         "Part 1234567 of the upload failed (0)."},
        {"tag", an<UploadError>(UploadError::MissingETag{2}), "Part 2 of the upload was not acknowledged."},
        {"asset", an<UploadError>(UploadError::NoAsset{}), "The server opened no upload for the archive."},
        {"database", an<NimbrelExportError>(NimbrelExportError::Database{{SQLiteError::Stage::step, 5, "locked"}}),
         "Vorn couldn't read your Messages history."},
        {"no database", an<NimbrelExportError>(NimbrelExportError::NoDatabase{}), "Messages isn't set up on this Mac."},
        {"busy", an<NimbrelExportError>(NimbrelExportError::SnapshotUnreadable{}),
         "Messages was busy. Try again in a moment."},
        {"no sentence", an<NimbrelExportError>(NimbrelExportError::AccessDenied{}), "Something went wrong."},
        {"no home", an<NoHomeFolder>(),
         "This user has no home folder, so there is no Messages history here. HOME can name one."},
        {"any other", an<std::runtime_error>("std::bad_thing"), "Something went wrong."},
    };
    return all;
}

TEST(ErrorText, HasALineForEveryError)
{
    for (const Case& each : cases()) EXPECT_EQ(errorText(*each.error).text, each.text) << each.name;
}

TEST(ErrorText, PromisesNoRetryToAProgramThatEnds)
{
    const auto last = [](Code code) { return errorText(URLError(code)).lastWords; };
    EXPECT_EQ(last(Code::notConnectedToInternet), "You're offline. Run it again.");
    EXPECT_EQ(last(Code::networkConnectionLost), "You're offline. Run it again.");
    EXPECT_EQ(last(Code::timedOut), "The connection timed out. Run it again.");
    for (const Case& each : cases()) {
        if (!std::string_view(each.text).ends_with("retry."))
            EXPECT_EQ(errorText(*each.error).lastWords, each.text) << each.name;
    }
}

TEST(ErrorText, AsksForAnotherRunWhereNothingAnsweredACommand)
{
    const auto told = [](Code code) { return commandText(URLError(code)); };
    EXPECT_EQ(told(Code::notConnectedToInternet), "You're offline. Run it again.");
    EXPECT_EQ(told(Code::timedOut), "The connection timed out. Run it again.");
    EXPECT_EQ(told(Code::cannotConnectToHost), "Vorn can't reach the server right now. Run it again.");
    EXPECT_EQ(commandText(APIError(APIError::HTTP{409, "Not now.", {}})), "Not now.");
}

TEST(ErrorText, IsForTheUserAndNotForTheLog)
{
    for (const Case& each : cases()) EXPECT_NE(each.text, std::string_view(each.error->what())) << each.name;
}

TEST(ErrorText, NamesWhatNoErrorSays)
{
    EXPECT_STREQ(archiveTooLarge, "Your chat is larger than the upload limit.");
    EXPECT_STREQ(wordlessRefusal, "The server refused and did not say why.");
}

} // namespace
} // namespace vorn
