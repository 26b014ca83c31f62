#pragma once

#include "tests/VornMac/Model/ModelFixture.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace vorn::testing {

/// Random numbers, the same on every platform for the same seed.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : numbers_(seed) {}

    /// From 0 to `count - 1`.
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(numbers_() % count); }
    bool chance(std::size_t percent) { return below(100) < percent; }
    template <class T>
    T pick(std::initializer_list<T> values)
    {
        return *(values.begin() + below(values.size()));
    }

private:
    std::mt19937_64 numbers_;
};

/// The service of a random walk: answers in any order, well or badly, and names the user in its answers.
class WalkingService {
public:
    WalkingService(ModelFixture& fix, Dice& dice) : fix_(fix), dice_(dice) {}

    /// The requests without an answer, cancelled ones included.
    std::vector<std::size_t> unanswered() const;
    /// How many requests like `request` wait; "/part-urls" stands for all that end in it.
    std::size_t waiting(const std::string& request) const;

    /// Answers request `index` in a random way, and returns a description of it.
    std::string answer(std::size_t index);
    /// Answers it so that the flow continues.
    void answerWell(std::size_t index);

    /// The user whose token a request carries, such as "user-ada"; empty without one.
    std::string userOf(std::size_t index) const;
    /// The request without the token.
    std::string lineOf(std::size_t index) const;

private:
    std::string answerBadly(std::size_t index);
    void say(std::size_t index, int status, const std::string& body);
    std::string linkDocument();
    std::string pollDocument();
    std::string questDocument(const std::string& user);
    std::string statusDocument(const std::string& id, bool well);
    std::string openedDocument(const std::string& user);
    std::string pairDocument(std::size_t index);
    std::string document(std::size_t index, bool well);

    ModelFixture& fix_;
    Dice& dice_;
    std::vector<bool> answered_;
    int tokens_ = 100;
    int submissions_ = 0;
};

} // namespace vorn::testing
