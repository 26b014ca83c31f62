#include "VornMacCore/Client/APIAnswer.h"

#include "Platform/Async/MainContext.h"
#include "tests/support/async/ManualExecutor.h"
#include "tests/support/log/CapturedLog.h"
#include "tests/support/service/ServiceAnswers.h"
#include "tests/support/service/ServiceFixture.h"

#include <gmock/gmock.h>

#include <functional>
#include <ostream>

namespace vorn {
namespace {

using testing::CapturedLog;
using ::testing::ElementsAre;
using testing::httpError;
using ::testing::IsEmpty;

const Log apiLog("app.vorn.mac", "api");

HTTPResponse answer(int status, std::string body)
{
    return {status, {}, std::move(body)};
}

template <class Record>
std::optional<APIError> refusal(const HTTPResponse& response)
{
    try {
        decode<Record>(response, apiLog);
    } catch (const APIError& error) {
        return error;
    }
    return std::nullopt;
}

TEST(APIAnswer, IsARecordForEveryStatusOf200To299)
{
    for (const int status : {200, 201, 202, 206, 226, 299}) {
        EXPECT_EQ(decode<SubmissionStatus>(answer(status, testing::submissionStatusJSON), apiLog),
                  testing::sampleSubmissionStatus());
    }
}

TEST(APIAnswer, IsARefusalForEveryOtherStatus)
{
    const CapturedLog log;
    for (const int status : {100, 199, 300, 301, 302, 304, 307, 308, 400, 403, 409, 410, 413, 429, 499, 500, 503, 599})
        EXPECT_EQ(refusal<SubmissionStatus>(answer(status, testing::submissionStatusJSON)), httpError(status));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(APIAnswer, TellsTheFirstThousandBytesOfTheServicesWords)
{
    const std::string longest(APIError::longestText, 'w');
    EXPECT_EQ(refusal<IgnoredBody>(answer(500, testing::errorJSON(longest, longest))),
              httpError(500, longest, longest));
    EXPECT_EQ(refusal<IgnoredBody>(answer(500, testing::errorJSON(longest + "w", "code" + longest))),
              httpError(500, longest + "…", "code" + longest.substr(4) + "…"));
    const std::string cut = longest.substr(2); // the next character takes four bytes
    EXPECT_EQ(refusal<IgnoredBody>(answer(500, testing::errorJSON(cut + "😀😀", "busy"))),
              httpError(500, cut + "…", "busy"));
}

TEST(LongAnswer, IsReadInTheBackground)
{
    MainContext main;
    testing::ManualExecutor background;
    const auto padded = [](std::size_t size) {
        std::string body = testing::submissionStatusJSON;
        return answer(200, body + std::string(size - body.size(), ' '));
    };
    for (const bool isLong : {false, true}) {
        std::optional<SubmissionStatus> read;
        const auto reading = [](HTTPResponse response, testing::ManualExecutor* executor,
                                std::optional<SubmissionStatus>* result) -> Async<> {
            *result = co_await decodeApart<SubmissionStatus>(std::move(response), apiLog, executor);
        };
        const Task task(main, reading(padded(longestDecodedInPlace + (isLong ? 1 : 0)), &background, &read));
        main.runUntilIdle();
        EXPECT_EQ(read.has_value(), !isLong);
        EXPECT_EQ(background.waiting(), isLong ? 1U : 0U);
        background.run();
        main.runUntilIdle();
        EXPECT_EQ(read, testing::sampleSubmissionStatus());
    }
    main.shutDown();
}

TEST(APIAnswer, IsNotReadWhenNobodyWantsIt)
{
    const CapturedLog log;
    for (const char* body : {"", "{}", "[", "null", "\xFF"})
        EXPECT_EQ(decode<IgnoredBody>(answer(204, body), apiLog), IgnoredBody{});
    EXPECT_EQ(refusal<IgnoredBody>(answer(500, "")), httpError(500));
    EXPECT_THAT(log.lines(), IsEmpty());
}

struct Undecodable {
    const char* record;
    std::function<std::optional<APIError>(const HTTPResponse&)> refusalFor;
};

std::ostream& operator<<(std::ostream& out, const Undecodable& answer)
{
    return out << answer.record;
}

class UndecodableAnswer : public ::testing::TestWithParam<Undecodable> {};

TEST_P(UndecodableAnswer, IsInvalidAndLoggedByItsNameAlone)
{
    const std::string deep = R"({"canary":)" + std::string(65, '[') + std::string(65, ']') + "}";
    const std::string large = R"({"canary":")" + std::string(16 << 20, 'x') + R"("})";
    for (const std::string& body :
         {std::string(), std::string("{}"), std::string("[]"), std::string("null"), std::string(R"({"canary":1)"),
          std::string("{\"canary\":\"\xFF\"}"), std::string("<html>canary</html>"), deep, large}) {
        const CapturedLog log;
        EXPECT_EQ(GetParam().refusalFor(answer(200, body)), APIError(APIError::InvalidResponse{}));
        EXPECT_THAT(log.lines(), ElementsAre("[api] undecodable " + std::string(GetParam().record) + " answer"));
    }
}

INSTANTIATE_TEST_SUITE_P(APIAnswer, UndecodableAnswer,
                         ::testing::Values(Undecodable{"DeviceLink", &refusal<DeviceLink>},
                                           Undecodable{"DeviceLinkPoll", &refusal<DeviceLinkPoll>},
                                           Undecodable{"TokenPair", &refusal<TokenPair>},
                                           Undecodable{"Revoked", &refusal<Revoked>},
                                           Undecodable{"NimbrelState", &refusal<NimbrelState>},
                                           Undecodable{"SubmissionUpload", &refusal<SubmissionUpload>},
                                           Undecodable{"PartUrls", &refusal<PartUrls>},
                                           Undecodable{"SubmissionStatus", &refusal<SubmissionStatus>}),
                         [](const auto& info) { return info.param.record; });

struct Refusal {
    const char* what;
    int status;
    std::string body;
    APIError expected;
    const char* logged;
};

std::ostream& operator<<(std::ostream& out, const Refusal& refused)
{
    return out << refused.what;
}

class RefusedAnswer : public ::testing::TestWithParam<Refusal> {};

TEST_P(RefusedAnswer, SaysWhatTheServiceSaid)
{
    const CapturedLog log;
    const auto error = refusal<NimbrelState>(answer(GetParam().status, GetParam().body));
    ASSERT_EQ(error, GetParam().expected);
    EXPECT_STREQ(error->what(), GetParam().logged);
    EXPECT_EQ(error->isLaneOff(), GetParam().status == 404);
    EXPECT_THAT(log.lines(), IsEmpty());
}

const std::string words = testing::errorJSON("The archive is locked.", "locked");

INSTANTIATE_TEST_SUITE_P(
    APIAnswer, RefusedAnswer,
    ::testing::Values(
        Refusal{"MessageAndCode", 500, words, httpError(500, "The archive is locked.", "locked"),
                "HTTP 500: The archive is locked."},
        Refusal{"MessageAlone", 500, R"({"message":"Locked."})", httpError(500, "Locked."), "HTTP 500: Locked."},
        Refusal{"CodeAlone", 500, R"({"code":"locked"})", httpError(500, {}, "locked"), "HTTP 500"},
        Refusal{"Nulls", 500, R"({"message":null,"code":null})", httpError(500), "HTTP 500"},
        Refusal{"EmptyMessage", 500, R"({"message":""})", httpError(500, ""), "HTTP 500: "},
        Refusal{"OtherKeys", 500, R"({"error":"no"})", httpError(500), "HTTP 500"},
        Refusal{"WrongType", 500, R"({"message":7,"code":"locked"})", httpError(500), "HTTP 500"},
        Refusal{"NoJSON", 500, "<html>", httpError(500), "HTTP 500"},
        Refusal{"NoBody", 503, "", httpError(503), "HTTP 503"},
        Refusal{"Redirect", 302, "", httpError(302), "HTTP 302"},
        Refusal{"LaneOff", 404, "", httpError(404), "HTTP 404"},
        Refusal{"LaneOffWithWords", 404, words, httpError(404, "The archive is locked.", "locked"),
                "HTTP 404: The archive is locked."},
        Refusal{"Unauthorized", 401, "", APIError(APIError::SessionExpired{}), "session not accepted"},
        Refusal{"UnauthorizedWithWords", 401, words, APIError(APIError::SessionExpired{}), "session not accepted"}),
    [](const auto& info) { return info.param.what; });

} // namespace
} // namespace vorn
