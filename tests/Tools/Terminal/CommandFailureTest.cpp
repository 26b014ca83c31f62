#include "Tools/Terminal/CommandFailure.h"

#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "Platform/HTTP/URLError.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Client/UploadError.h"

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
    TerminalStatus status;
};

template <class Error, class... Arguments>
std::shared_ptr<std::exception> an(Arguments&&... arguments)
{
    return std::make_shared<Error>(std::forward<Arguments>(arguments)...);
}

const std::vector<Case>& cases()
{
    using S = TerminalStatus;
    static constexpr const char* unlinked = "Your Mac is no longer linked. Link it again.";
    static constexpr const char* elsewhere = "Vorn can't reach the server right now.";
    static const std::vector<Case> all = {
        {"offline", an<URLError>(Code::notConnectedToInternet), "You're offline. Vorn will retry.", S::unreachable},
        {"cut", an<URLError>(Code::networkConnectionLost), "You're offline. Vorn will retry.", S::unreachable},
        {"slow", an<URLError>(Code::timedOut), "The connection timed out. Vorn will retry.", S::unreachable},
        {"refused", an<URLError>(Code::cannotConnectToHost), elsewhere, S::unreachable},
        {"no such host", an<URLError>(Code::cannotFindHost), elsewhere, S::unreachable},
        {"TLS", an<URLError>(Code::secureConnectionFailed), elsewhere, S::unreachable},
        {"unknown", an<URLError>(Code::unknown), elsewhere, S::unreachable},
        {"lane off", an<APIError>(APIError::HTTP{404, "no route", "x"}),
         "Nimbrel export isn't available yet. Check back soon.", S::notNow},
        {"message", an<APIError>(APIError::HTTP{409, "Not now.", {}}), "Not now.", S::refused},
        {"no message", an<APIError>(APIError::HTTP{500, {}, {}}), "The server answered 500.", S::refused},
        {"not signed in", an<APIError>(APIError::NotSignedIn{}), unlinked, S::notLinked},
        {"expired", an<APIError>(APIError::SessionExpired{}), unlinked, S::notLinked},
        {"changed", an<APIError>(APIError::SessionChanged{}), "You signed in again, so this step was stopped.",
         S::notLinked},
        {"garbage", an<APIError>(APIError::InvalidResponse{}), "The server sent an answer Vorn could not read.",
         S::refused},
        {"part", an<UploadError>(UploadError::PartRefused{3, 500}), "Part 3 of the upload failed (500).", S::refused},
        {"tag", an<UploadError>(UploadError::MissingETag{2}), "Part 2 of the upload was not acknowledged.", S::refused},
        {"asset", an<UploadError>(UploadError::NoAsset{}), "The server opened no upload for the archive.", S::refused},
        {"no database", an<NimbrelExportError>(NimbrelExportError::NoDatabase{}), "Messages isn't set up on this Mac.",
         S::failed},
        {"busy", an<NimbrelExportError>(NimbrelExportError::SnapshotUnreadable{}),
         "Messages was busy. Try again in a moment.", S::failed},
        {"no sentence", an<NimbrelExportError>(NimbrelExportError::AccessDenied{}), "Something went wrong.", S::failed},
        {"any other", an<std::runtime_error>("std::bad_thing"), "Something went wrong.", S::failed},
    };
    return all;
}

TEST(CommandFailure, TellsTheCasesApart)
{
    for (const Case& each : cases()) {
        EXPECT_EQ(failureOf(*each.error).status(), each.status) << each.name;
        if (each.status == TerminalStatus::unreachable) continue; // has texts of its own, below
        EXPECT_EQ(failureOf(*each.error).text(), each.text) << each.name;
    }
}

TEST(CommandFailure, PromisesNoRetryOnceTheProgramEnds)
{
    const auto last = [](Code code) { return failureOf(URLError(code)).text(); };
    EXPECT_EQ(last(Code::notConnectedToInternet), "You're offline. Run it again.");
    EXPECT_EQ(last(Code::networkConnectionLost), "You're offline. Run it again.");
    EXPECT_EQ(last(Code::timedOut), "The connection timed out. Run it again.");
    EXPECT_EQ(last(Code::cannotConnectToHost), "Vorn can't reach the server right now. Run it again.");
}

TEST(CommandFailure, PassesAFailureThrough)
{
    const CommandFailure failure(TerminalStatus::declined, "Nothing was uploaded.");
    EXPECT_EQ(failureOf(failure), failure);
}

TEST(SpokenWords, GiveATerminalNoCommands)
{
    EXPECT_EQ(spokenWords("Something went wrong."), "Something went wrong.");
    EXPECT_EQ(spokenWords("\x1B[2J"), "\uFFFD[2J");
}

TEST(CommandFailure, TellsARefusalWithoutWords)
{
    for (const char* message : {"", "  ", "\u200B"}) {
        EXPECT_EQ(failureOf(APIError(APIError::HTTP{422, message, {}})),
                  CommandFailure(TerminalStatus::refused, "The server refused and did not say why."));
    }
}

TEST(CommandFailure, KeepsTheServicesWordsHarmless)
{
    EXPECT_EQ(failureOf(APIError(APIError::HTTP{400, "\x1B[2Jgone", {}})),
              CommandFailure(TerminalStatus::refused, "\uFFFD[2Jgone"));
}

} // namespace
} // namespace vorn
