#pragma once

#include "tests/VornMac/Model/ModelWatch.h"
#include "tests/VornMac/Model/WalkingService.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vorn::testing {

/// Random actions of the user, the service, the clock, other processes and the database on a model, which must keep its
/// promises after each of them. The same seed repeats the same walk.
class RandomWalk {
public:
    explicit RandomWalk(std::uint64_t seed);
    ~RandomWalk();
    RandomWalk(RandomWalk&&) = delete;

    /// Takes `length` actions, checks that the user still reaches the end with a service that works, and quits. Returns
    /// the promises broken by the first action that broke any.
    std::vector<std::string> run(int length);
    /// The actions so far, the latest last.
    const std::vector<std::string>& journal() const { return journal_; }

private:
    struct Action {
        std::string name;
        std::size_t weight;
        std::function<bool()> isPossible;
        std::function<void()> run;
    };

    // The possible actions.
    void addUserActions();
    void addWorldActions();
    void act();
    void launch();
    void go(Step step);
    void answerAny();
    void reportProgress();
    void passTime(Clock::Duration duration);
    void changeStore();
    void changeMessages();
    void reachTheEnd();
    void quit();

    // Promises, after each action and when the main thread is idle.
    void require(bool holds, const std::string& promise);
    void observe(bool isAtRest);
    void observeRequests();
    void checkAtRest();
    void checkJobs();
    void checkLinking();
    void checkOwnership();
    void checkUpload();
    void checkStore();
    void checkLog();
    bool mayUpload() const;
    std::string user() const; ///< of the model; empty without one
    bool isForeign(const std::optional<StoredSession>& stored) const;

    Dice dice_;
    ModelFixture fix_;
    WalkingService service_{fix_, dice_};
    std::unique_ptr<ModelWatch> watch_;
    std::vector<Action> actions_;
    std::vector<std::string> journal_;
    std::vector<std::string> broken_;

    std::size_t observedRequests_ = 0;
    std::int64_t observedGeneration_ = 0;
    std::optional<Clock::Duration> lastCodeRequest_; ///< of the link loop that runs now
    std::map<std::string, Clock::Duration> lastReviewPoll_;
    std::optional<StoredSession> foreignSession_; ///< stored by another process for another user
};

} // namespace vorn::testing
