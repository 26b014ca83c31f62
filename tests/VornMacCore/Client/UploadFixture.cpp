#include "tests/VornMacCore/Client/UploadFixture.h"

#include <utility>

#include <nlohmann/json.hpp>

namespace vorn::testing {
namespace {

using nlohmann::json;

json partsOf(int first, const std::vector<std::string>& urls)
{
    json parts = json::array();
    for (const std::string& url : urls) parts.push_back({{"partNumber", first++}, {"url", url}});
    return parts;
}

} // namespace

std::string putting(int part)
{
    return "PUT /parts/" + std::to_string(part) + "?signature=canary%2F" + std::to_string(part);
}

Answer submissionAnswer(const std::vector<std::string>& urls)
{
    const json asset = {{"assetId", "a1"}, {"position", 0}, {"uploadId", "u1"}, {"parts", partsOf(1, urls)}};
    const json submission = {{"submissionId", "s1"},
                             {"questId", "q1"},
                             {"attempt", 1},
                             {"assets", json::array({asset})},
                             {"expiresInSeconds", 3600}};
    return Answer::json(201, submission.dump());
}

UploadFixture::UploadFixture(std::string_view content, std::int64_t size) : partSize(size)
{
    writeFile(file, content);
    const auto base = URL::parse(server.url("/api/v1"));
    api.emplace(APIConfiguration{base.value()}, session, store);
}

UploadFixture::~UploadFixture()
{
    context.shutDown();
}

std::string UploadFixture::urlOf(int part) const
{
    return server.url(putting(part).substr(4));
}

std::vector<std::string> UploadFixture::urlsOf(int first, int last) const
{
    std::vector<std::string> urls;
    for (int part = first; part <= last; ++part) urls.push_back(urlOf(part));
    return urls;
}

void UploadFixture::opens(const std::vector<std::string>& urls)
{
    server.answer(submissionAnswer(urls));
}

void UploadFixture::takesPart(const std::string& tag)
{
    answersPart(200, {{"ETag", tag}});
}

void UploadFixture::answersPart(int status, HeaderList headers)
{
    server.answer({.status = status, .headers = std::move(headers)});
}

void UploadFixture::givesURLs(int first, const std::vector<std::string>& urls)
{
    const json answer = {
        {"submissionId", "s1"}, {"assetId", "a1"}, {"parts", partsOf(first, urls)}, {"expiresInSeconds", 3600}};
    server.answer(Answer::json(200, answer.dump()));
}

void UploadFixture::completes()
{
    server.answer(Answer::json(200, R"({"id":"s1","questId":"q1","status":"processing","assetsRemaining":0})"));
}

void UploadFixture::aborts()
{
    server.answer({});
}

UploadFixture::CancelTimes UploadFixture::cancelAndWait()
{
    // Shared: the waiting thread may resume before the other one has returned from `set_value`.
    const auto cancelled = std::make_shared<std::promise<CancelTimes>>();
    context.post([this, cancelled] {
        const auto begin = std::chrono::steady_clock::now();
        cancel();
        cancelled->set_value({begin, std::chrono::steady_clock::now() - begin});
    });
    return cancelled->get_future().get();
}

LoopbackServer::Handler UploadFixture::cancels(std::size_t bytes)
{
    return [this, bytes](Exchange& exchange) {
        exchange.readBody(bytes);
        const auto begin = cancelAndWait().begin;
        const auto noteTime = [this, begin] { timeToClose_.set_value(std::chrono::steady_clock::now() - begin); };
        try {
            exchange.readWholeBody();
            exchange.stayUntilClosed();
        } catch (const PeerGone&) {
            noteTime();
            throw;
        }
        noteTime();
    };
}

Async<> UploadFixture::keepEnd(Async<SubmissionStatus> upload, std::shared_ptr<End> end)
{
    try {
        end->status = co_await std::move(upload);
    } catch (...) {
        end->error = std::current_exception();
    }
}

void UploadFixture::start()
{
    end_ = std::make_shared<End>();
    const MultipartUploader uploader(api.value(), session, pool, partSize);
    const auto keepReport = [this](const UploadProgress& progress) {
        {
            const std::lock_guard lock(mutex_);
            reports_.push_back(progress);
        }
        if (onProgress) onProgress(progress);
    };
    task =
        Task(context, keepEnd(uploader.upload(file, {.termsVersion = "2026-01", .device = device}, keepReport), end_));
}

void UploadFixture::finish()
{
    context.runUntil([this] { return !task.isRunning(); });
}

SubmissionStatus UploadFixture::result() const
{
    if (end_->error) std::rethrow_exception(end_->error);
    return end_->status.value();
}

SubmissionStatus UploadFixture::upload()
{
    start();
    finish();
    return result();
}

std::vector<std::string> UploadFixture::requests() const
{
    std::vector<std::string> lines;
    for (const auto& request : server.requests()) lines.push_back(request.method + " " + request.target);
    return lines;
}

json UploadFixture::bodyOf(std::size_t request) const
{
    return json::parse(server.requests().at(request).body);
}

std::vector<UploadProgress> UploadFixture::reports() const
{
    const std::lock_guard lock(mutex_);
    return reports_;
}

} // namespace vorn::testing
