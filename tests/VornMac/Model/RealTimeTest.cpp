#include "Platform/Async/BackgroundPool.h"
#include "tests/VornMac/Model/ModelFixture.h"
#include "tests/support/http/LoopbackServer.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>

#include <fmt/format.h>

namespace vorn {
namespace {

using testing::adasSession;
using testing::Answer;
using testing::Exchange;
using ::testing::IsEmpty;
using testing::LoopbackServer;
using testing::ModelFixture;
using testing::ReceivedRequest;

/// A pool that tells the main thread when a piece of work begins.
class ToldPool final : public BackgroundExecutor {
public:
    explicit ToldPool(MainContext& context) : context_(context) {}

    std::size_t begun() const { return begun_; } ///< used on the main thread only

    void post(std::function<void()> work) override
    {
        pool_.post([this, work = std::move(work)] {
            context_.post([this] { ++begun_; });
            work();
        });
    }

private:
    MainContext& context_;
    std::size_t begun_ = 0;
    BackgroundPool pool_;
};

/// The system's files with another temporary directory. Threads: any.
class FilesBelow final : public FileManager {
public:
    explicit FilesBelow(std::filesystem::path temporary) : temporary_(std::move(temporary)) {}

    std::filesystem::path temporaryDirectory() override { return temporary_; }

private:
    std::filesystem::path temporary_;
};

/// A model as in the application, with the system's clock, threads and sockets; only the service is the test's own.
class RealTime : public ::testing::Test {
protected:
    RealTime() : files_(folder_ / "tmp"), messages_(folder_ / "chat.db")
    {
        std::filesystem::create_directory(folder_ / "tmp");
        messages_.assistantChat();
        for (int number = 0; number < 100; ++number) messages_.message();
        server_.respond([this](const ReceivedRequest& request) { return answerTo(request); });
    }
    ~RealTime() override { quit(); }

    /// Answers the next `answered` requests, leaves the one after them without an answer, and tells the main thread.
    void holdAfter(std::size_t answered)
    {
        const auto answer = [this](Exchange& exchange) {
            exchange.readWholeBody();
            exchange.answer(answerTo(exchange.request()));
        };
        for (std::size_t request = 0; request < answered; ++request) server_.script(answer);
        server_.script([this](Exchange& exchange) {
            exchange.readBody(1);
            context_.post([this] { isHeld_ = true; });
            exchange.stayUntilClosed();
        });
    }

    AppModel& launch()
    {
        model_ = std::make_unique<AppModel>(AppServices{
            .context = &context_,
            .clock = &clock_,
            .background = &background_,
            .api = VornAPI({URL::parse(server_.url("")).value()}, http_, tokens_),
            .tokens = tokens_,
            .transfer = http_,
            .defaults = &defaults_,
            .workspace = &workspace_,
            .files = &files_,
            .messagesDatabase = folder_ / "chat.db",
            .bundle = Bundle({{"CFBundleShortVersionString", "1.2.3"}}),
        });
        model_->start();
        return *model_;
    }
    AppModel& launchSignedIn(bool consented = true)
    {
        tokens_->save(adasSession());
        if (consented) defaults_.setBoolean("consent.vorn-mac-nimbrel-1.user-ada", true);
        return launch();
    }
    /// Signed in, and the upload is begun.
    void launchUpload()
    {
        const AppModel& model = launchSignedIn();
        context_.runUntil([&] { return model.canUpload(); });
        model_->upload();
    }
    void runUntilHeld()
    {
        context_.runUntil([this] { return isHeld_; });
    }
    void runUntilWork(std::size_t number)
    {
        context_.runUntil([this, number] { return background_.begun() >= number; });
    }
    void runUntil(const std::function<bool()>& done) { context_.runUntil(done); }
    void runUntilStep(Step step)
    {
        context_.runUntil([this, step] { return model_->step() == step; });
    }

    /// Quits in the middle of whatever is under way.
    void quit()
    {
        if (!model_) return;
        context_.shutDown();
        EXPECT_EQ(context_.runningTasks(), 0U);
        model_.reset();
        EXPECT_THAT(leftovers(), IsEmpty());
    }
    std::vector<std::string> leftovers() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_ / "tmp"))
            names.push_back(entry.path().filename().string());
        return names;
    }

    testing::TemporaryFolder folder_;
    testing::CapturedLog log_;
    std::shared_ptr<InMemoryTokenStore> tokens_ = std::make_shared<InMemoryTokenStore>();

private:
    Answer answerTo(const ReceivedRequest& request) const
    {
        const std::string line = request.method + " " + request.target;
        if (line.starts_with("PUT")) return {.headers = {{"ETag", "\"tag-1\""}}};
        return Answer::json(200, documentFor(line));
    }
    std::string documentFor(const std::string& line) const
    {
        if (line == ModelFixture::links) return testing::linkJSON(1000, "tomorrow");
        if (line == ModelFixture::polls) return testing::approvalJSON(adasSession());
        if (line == ModelFixture::quest) return testing::questJSON();
        if (line == ModelFixture::completes) return testing::submissionJSON("analyzing");
        if (line != ModelFixture::creates) return "{}";
        return fmt::format(
            R"({{"submissionId":"sub-1","questId":"quest-1","attempt":1,"expiresInSeconds":3600,"assets":[
            {{"assetId":"asset-1","position":0,"uploadId":"upload-1","parts":[{{"partNumber":1,"url":"{}"}}]}}]}})",
            server_.url("/part/1?sig=canary-1"));
    }

    MainContext context_;
    SystemClock clock_;
    ToldPool background_{context_};
    std::shared_ptr<HTTPSession> http_ = HTTPSession::make();
    testing::InMemoryDefaults defaults_;
    testing::RecordingWorkspace workspace_;
    FilesBelow files_;
    testing::MessagesFixture messages_;
    bool isHeld_ = false;
    std::unique_ptr<AppModel> model_;
    LoopbackServer server_; // last: its handlers use what is above, and end with it
};

TEST_F(RealTime, LeadsFromLinkingToTheReview)
{
    AppModel& model = launch();
    runUntilStep(Step::consent);
    EXPECT_EQ(tokens_->load(), adasSession());
    model.setUnderstandsUpload(true);
    model.setAgreesToShare(true);
    model.acceptConsent();
    EXPECT_EQ(model.step(), Step::find);
    runUntil([&] { return model.canUpload(); });
    model.upload();
    runUntilStep(Step::done);
    EXPECT_EQ(model.submission().value().id, "sub-1");
    EXPECT_EQ(model.uploadPhase(), UploadPhase(phase::Idle{}));
    EXPECT_THAT(leftovers(), IsEmpty());
    EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(RealTime, MayQuitWhileACodeIsAskedFor)
{
    holdAfter(0);
    launch();
    runUntilHeld();
}

TEST_F(RealTime, MayQuitBetweenTwoPolls)
{
    const AppModel& model = launch();
    runUntil([&] { return model.qrPayload().has_value(); });
}

TEST_F(RealTime, MayQuitWhileTheLinkIsPolled)
{
    holdAfter(1);
    launch();
    runUntilHeld();
}

TEST_F(RealTime, MayQuitWhileTheQuestIsFetchedAhead)
{
    holdAfter(0);
    launchSignedIn(false);
    runUntilHeld();
}

TEST_F(RealTime, MayQuitWhileAccessIsProbed)
{
    std::filesystem::rename(folder_ / "chat.db", folder_ / "aside.db");
    EXPECT_EQ(launchSignedIn().step(), Step::access);
}

TEST_F(RealTime, MayQuitWhileTheQuestIsAskedFor)
{
    holdAfter(0);
    launchSignedIn();
    runUntilHeld();
}

// The pieces of background work, in order: read the database; pack, hash and open the archive.
TEST_F(RealTime, MayQuitWhileMessagesAreRead)
{
    launchSignedIn();
    runUntilWork(1);
}

TEST_F(RealTime, MayQuitWhileTheArchiveIsPacked)
{
    launchUpload();
    runUntilWork(2);
}

TEST_F(RealTime, MayQuitWhileTheArchiveIsHashed)
{
    launchUpload();
    runUntilWork(3);
}

TEST_F(RealTime, MayQuitWhileTheArchiveIsOpened)
{
    launchUpload();
    runUntilWork(4);
}

TEST_F(RealTime, MayQuitWhileTheSubmissionIsCreated)
{
    holdAfter(1);
    launchUpload();
    runUntilHeld();
}

TEST_F(RealTime, MayQuitWhileAPartIsSent)
{
    holdAfter(2);
    launchUpload();
    runUntilHeld();
}

TEST_F(RealTime, MayQuitWhileTheSubmissionIsCompleted)
{
    holdAfter(3);
    launchUpload();
    runUntilHeld();
}

TEST_F(RealTime, MayQuitWhileTheReviewIsWatched)
{
    launchUpload();
    runUntilStep(Step::done);
}

} // namespace
} // namespace vorn
