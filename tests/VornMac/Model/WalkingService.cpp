#include "tests/VornMac/Model/WalkingService.h"

#include "tests/support/service/ServiceAnswers.h"

#include <fmt/format.h>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;

constexpr std::string_view submissions = "/api/v1/desktop/nimbrel/submissions/";

/// The ID in a path below `submissions`, such as "sub-ada-1"; empty for other paths.
std::string submissionOf(const std::string& line)
{
    const auto begin = line.find(submissions);
    if (begin == std::string::npos) return "";
    const auto rest = line.substr(begin + submissions.size());
    return rest.substr(0, rest.find('/'));
}

std::string nameOf(const std::string& user)
{
    return user == "user-bela" ? "bela" : "ada";
}

} // namespace

std::string WalkingService::lineOf(std::size_t index) const
{
    const auto summary = fix_.http->summary(index);
    return summary.substr(0, summary.find(','));
}

std::string WalkingService::userOf(std::size_t index) const
{
    const auto summary = fix_.http->summary(index);
    if (summary.find("Bearer") == std::string::npos) return "";
    return summary.find("bela") != std::string::npos ? "user-bela" : "user-ada";
}

std::vector<std::size_t> WalkingService::unanswered() const
{
    std::vector<std::size_t> result;
    for (std::size_t index = 0; index < fix_.http->count(); ++index)
        if (index >= answered_.size() || !answered_[index]) result.push_back(index);
    return result;
}

std::size_t WalkingService::waiting(const std::string& request) const
{
    std::size_t count = 0;
    for (const std::size_t index : unanswered()) {
        const auto line = lineOf(index);
        const bool isMeant = request.starts_with('/') ? line.ends_with(request) : line == request;
        if (isMeant && !fix_.http->isCancelled(index)) ++count;
    }
    return count;
}

void WalkingService::say(std::size_t index, int status, const std::string& body)
{
    answered_.resize(std::max(answered_.size(), index + 1));
    answered_[index] = true;
    if (status == 200 && lineOf(index).starts_with("PUT"))
        fix_.http->acknowledge(index, "\"tag\"");
    else
        fix_.http->answer(index, status, body);
}

void WalkingService::answerWell(std::size_t index)
{
    say(index, 200, document(index, true));
}

std::string WalkingService::answer(std::size_t index)
{
    if (dice_.chance(35)) return answerBadly(index);
    say(index, 200, document(index, false));
    return "answer";
}

std::string WalkingService::answerBadly(std::size_t index)
{
    if (dice_.chance(25)) {
        answered_.resize(std::max(answered_.size(), index + 1));
        answered_[index] = true;
        fix_.http->fail(index, dice_.pick({URLError::Code::timedOut, URLError::Code::notConnectedToInternet,
                                           URLError::Code::badServerResponse, URLError::Code::cannotConnectToHost}));
        return "fail";
    }
    if (dice_.chance(20)) {
        say(index, 201, "<html>");
        return "answer with garbage";
    }
    const int status = dice_.pick({400, 401, 401, 401, 403, 404, 500});
    say(index, status, dice_.chance(50) ? errorJSON("Try later.", "busy") : "");
    return fmt::format("answer with {}", status);
}

std::string WalkingService::linkDocument()
{
    const auto end = fix_.clock.date() + dice_.pick<std::chrono::seconds>({-60s, 10s, 120s, 900s});
    return linkJSON(dice_.pick<std::int64_t>({0, 1000, 3000}), dice_.chance(10) ? "tomorrow" : internetDateTime(end));
}

std::string WalkingService::pollDocument()
{
    if (dice_.chance(50)) return pollJSON(dice_.pick({"pending", "scanned", "rejected", "expired", "approved"}));
    const int number = ++tokens_;
    return approvalJSON(dice_.chance(50) ? adasSession(number) : belasSession(number));
}

std::string WalkingService::questDocument(const std::string& user)
{
    const auto status = dice_.pick({"available", "available", "available", "rejected", "submitted", "approved"});
    const auto handles = dice_.pick({R"("+15550102030")", R"("+15550102030")", R"("+15559999999")", ""});
    return fmt::format(
        R"({{"quest":{{"id":"quest-{}","status":"{}","availableAt":"{}"}},"handles":[{}],"maxBytes":{}}})", user,
        status, internetDateTime(fix_.clock.date() + dice_.pick<std::chrono::seconds>({-60s, 60s, 86400s})), handles,
        dice_.chance(10) ? 10 : 5'000'000);
}

std::string WalkingService::statusDocument(const std::string& id, bool well)
{
    const auto status = well ? "analyzing" : dice_.pick({"analyzing", "review_pending", "approved", "rejected", "new"});
    return fmt::format(R"({{"id":"{}","questId":"quest-1","status":"{}"}})", id, status);
}

std::string WalkingService::openedDocument(const std::string& user)
{
    return fmt::format(
        R"({{"submissionId":"sub-{}-{}","questId":"quest-1","attempt":1,"expiresInSeconds":3600,"assets":[
        {{"assetId":"asset-1","position":0,"uploadId":"upload-1","parts":[
            {{"partNumber":1,"url":"https://storage.example.com/part/1?sig=canary-1"}}]}}]}})",
        nameOf(user), ++submissions_);
}

std::string WalkingService::pairDocument(std::size_t index)
{
    const bool isBelas = fix_.http->body(index).find("bela") != std::string::npos;
    const int number = ++tokens_;
    return tokenPairJSON(isBelas ? belasSession(number) : adasSession(number));
}

std::string WalkingService::document(std::size_t index, bool well)
{
    const std::string line = lineOf(index);
    if (line == ModelFixture::links) return well ? linkJSON(1000, "tomorrow") : linkDocument();
    if (line == ModelFixture::polls) return well ? pollJSON("pending") : pollDocument();
    if (line == ModelFixture::refreshes) return pairDocument(index);
    if (line == ModelFixture::revokes) return revokedJSON;
    if (line == ModelFixture::creates) return openedDocument(userOf(index));
    if (line.ends_with("/part-urls")) return partURLsJSON();
    if (line.ends_with("/abort") || line.starts_with("PUT")) return "{}";
    const std::string submission = submissionOf(line);
    if (!submission.empty()) return statusDocument(submission, well);
    if (!well) return questDocument(nameOf(userOf(index)));
    return fmt::format(
        R"({{"quest":{{"id":"quest-{}","status":"available"}},"handles":["+15550102030"],"maxBytes":5000000}})",
        nameOf(userOf(index)));
}

} // namespace vorn::testing
