#include "VornMac/Model/Announcements.h"

#include "tests/VornMac/Model/ModelFixture.h"
#include "tests/VornMac/Model/ModelState.h"
#include "tests/support/service/ServiceAnswers.h"

#include <functional>

#include <gmock/gmock.h>

// What listeners see, and what they may start, when a change is announced.
namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::adasSession;
using testing::belasSession;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::ModelFixture;
using testing::ModelState;
using testing::questJSON;
using testing::submissionJSON;
using Place = Announcements::Place;

class Changes : public ::testing::Test {
protected:
    void set(int& property, int value, const std::string& name, Place place = Place::last)
    {
        const int before = std::exchange(property, value);
        announcements_.changed(
            property, before, [this, &property, name] { told_.push_back(name + " " + std::to_string(property)); },
            place);
    }

    Announcements announcements_;
    int width_ = 0;
    int height_ = 0;
    std::vector<std::string> told_;
};

TEST_F(Changes, AreToldAtOnceOutsideATransition)
{
    set(width_, 1, "width");
    EXPECT_THAT(told_, ElementsAre("width 1"));
}

TEST_F(Changes, AreToldInTheirOrderOnceTheOutermostTransitionIsOver)
{
    {
        const Announcements::Transition outer(announcements_);
        {
            const Announcements::Transition inner(announcements_);
            set(width_, 1, "width");
            set(height_, 2, "height");
            set(width_, 3, "width");
        }
        EXPECT_THAT(told_, IsEmpty());
    }
    EXPECT_THAT(told_, ElementsAre("width 3", "height 2"));
}

TEST_F(Changes, ThatWereTakenBackAreNone)
{
    {
        const Announcements::Transition whole(announcements_);
        set(width_, 1, "width");
        set(width_, 0, "width");
    }
    EXPECT_THAT(told_, IsEmpty());
}

TEST_F(Changes, MayBeToldFirst)
{
    {
        const Announcements::Transition whole(announcements_);
        set(width_, 1, "width");
        set(height_, 2, "height", Place::first);
    }
    EXPECT_THAT(told_, ElementsAre("height 2", "width 1"));
}

/// A model with a listener.
class Listeners : public ::testing::Test {
protected:
    /// Runs `reaction` the next time `signal` is sent.
    template <class Signal>
    void on(Signal signal, std::function<void(AppModel&)> reaction)
    {
        QObject::connect(
            &fix_.model(), signal, &fix_.model(), [this, reaction] { reaction(fix_.model()); },
            static_cast<Qt::ConnectionType>(Qt::SingleShotConnection));
    }
    ModelState state() { return ModelState::of(fix_.model()); }

    ModelFixture fix_;
};

TEST_F(Listeners, WhoLeaveTheAccessStepLeaveNoProbeBehind)
{
    fix_.setAccess(FullDiskAccessStatus::denied);
    fix_.launchSignedIn();
    on(&AppModel::accessChanged, [](AppModel& model) { model.go(Step::find); });
    fix_.setAccess(FullDiskAccessStatus::granted);
    fix_.model().startAccessProbe();
    fix_.run();
    EXPECT_EQ(fix_.model().step(), Step::find);
    EXPECT_EQ(fix_.clock.pendingSleeps(), 0U);
}

TEST_F(Listeners, WhoLeaveAStepThatIsJustEnteredLeaveNothingOfItBehind)
{
    fix_.launchFound();
    on(&AppModel::stepChanged, [](AppModel& model) { model.go(Step::consent); });
    fix_.model().go(Step::access);
    fix_.run();
    EXPECT_EQ(fix_.model().step(), Step::consent);
    EXPECT_EQ(fix_.clock.pendingSleeps(), 0U);
    EXPECT_TRUE(fix_.isWaiting(ModelFixture::quest)); // the prefetch of the step that was entered last
}

TEST_F(Listeners, WhoEndTheSessionHaveItEndedOnce)
{
    fix_.launchDone();
    const auto generation = fix_.model().sessionGeneration();
    on(&AppModel::submissionChanged, [](AppModel& model) { model.signOut(); });
    fix_.advance(5s);
    fix_.answer(ModelFixture::review, submissionJSON("approved"));
    fix_.runAll();
    EXPECT_EQ(fix_.model().sessionGeneration(), generation + 1);
    EXPECT_EQ(fix_.asked(ModelFixture::quest), 1U) << "of the scan; the outcome is nobody's any more";
    EXPECT_THAT(fix_.log.lines(), IsEmpty());
}

TEST_F(Listeners, WhoSignOutWhenTheQuestIsKnownSeeNothingFound)
{
    fix_.launchSignedIn();
    on(&AppModel::nimbrelChanged, [](AppModel& model) { model.signOut(); });
    fix_.answer(ModelFixture::quest, questJSON("available", ""));
    fix_.runAll();
    EXPECT_EQ(fix_.model().step(), Step::link);
    EXPECT_EQ(fix_.model().scanPhase(), ScanPhase(phase::Idle{}));
}

/// The signals announced during one transition.
struct Made {
    const char* name;
    std::function<void(ModelFixture&)> reach;
    std::function<void(ModelFixture&)> make;
    std::vector<std::string> told;
};

class Transitions : public Listeners, public ::testing::WithParamInterface<Made> {
protected:
    template <class Signal>
    void record(Signal signal, const char* name)
    {
        QObject::connect(&fix_.model(), signal, &recorder_, [this, name] {
            told_.emplace_back(name);
            seen_.push_back(state());
        });
    }

    std::vector<std::string> told_;
    std::vector<ModelState> seen_;
    QObject recorder_;
};

TEST_P(Transitions, AreToldOfWhenTheyAreOverTheStepFirst)
{
    GetParam().reach(fix_);
    record(&AppModel::stepChanged, "step");
    record(&AppModel::sessionChanged, "session");
    record(&AppModel::linkPhaseChanged, "linkPhase");
    record(&AppModel::nimbrelChanged, "nimbrel");
    record(&AppModel::exportResultChanged, "export");
    record(&AppModel::scanPhaseChanged, "scanPhase");
    record(&AppModel::uploadPhaseChanged, "uploadPhase");
    record(&AppModel::submissionChanged, "submission");
    GetParam().make(fix_);
    EXPECT_EQ(told_, GetParam().told);
    for (const ModelState& each : seen_) EXPECT_EQ(each, state());
}

INSTANTIATE_TEST_SUITE_P(
    , Transitions,
    ::testing::Values(Made{"FinishedUpload",
                           [](ModelFixture& fix) {
                               fix.launchUploading();
                               fix.http->acknowledge(fix.http->waiting(ModelFixture::puts).value(), "\"tag-1\"");
                               fix.run();
                           },
                           [](ModelFixture& fix) { fix.answer(ModelFixture::completes, submissionJSON("analyzing")); },
                           {"step", "submission", "uploadPhase"}},
                      Made{"BegunUpload",
                           [](ModelFixture& fix) { fix.launchFound(); },
                           [](ModelFixture& fix) { fix.model().upload(); },
                           {"step", "uploadPhase"}},
                      Made{"EndOfTheSession",
                           [](ModelFixture& fix) { fix.launchDone(); },
                           [](ModelFixture& fix) { fix.model().signOut(); },
                           {"step", "session", "nimbrel", "export", "submission", "scanPhase"}},
                      Made{"SignIn",
                           [](ModelFixture& fix) {
                               fix.launch();
                               fix.answer(ModelFixture::links, testing::linkJSON());
                               fix.advance(2s);
                           },
                           [](ModelFixture& fix) {
                               fix.answer(ModelFixture::polls, testing::approvalJSON(adasSession()));
                           },
                           {"step", "session", "linkPhase"}},
                      Made{"FoundChat",
                           [](ModelFixture& fix) {
                               fix.launchSignedIn();
                               fix.answer(ModelFixture::quest, questJSON());
                           },
                           [](ModelFixture& fix) { fix.runAll(); },
                           {"export", "scanPhase"}}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace vorn
