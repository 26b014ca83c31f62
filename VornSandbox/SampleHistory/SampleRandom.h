#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>

namespace vorn {

/// Random numbers from a seed, the same with every standard library. The standard fixes the numbers of the engine but
/// not those of its distributions, so no distribution is used. Threads: one at a time.
class SampleRandom {
public:
    explicit SampleRandom(std::uint64_t seed) : engine_(seed) {}

    /// A number below `bound`, which is above 0 and far below 2^64: the bias of the remainder does not matter here.
    std::uint64_t below(std::uint64_t bound) { return engine_() % bound; }

    /// A number from `low` to `high`, both included.
    std::int64_t between(std::int64_t low, std::int64_t high)
    {
        return low + static_cast<std::int64_t>(below(static_cast<std::uint64_t>(high - low) + 1));
    }

    /// True `perMille` times in a thousand.
    bool chance(unsigned perMille) { return below(1000) < perMille; }

    template <class T>
    const T& pick(std::span<const T> choices)
    {
        return choices[below(choices.size())];
    }

    /// A version 4 UUID in upper case, as message guids are written.
    void uuid(std::string& into)
    {
        static constexpr std::string_view pattern = "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx";
        into.assign(pattern);
        std::uint64_t bits = engine_();
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            if (i == 18) bits = engine_(); // 64 bits are 16 digits, and a UUID has 31 random ones
            if (pattern[i] != 'x' && pattern[i] != 'y') continue;
            const unsigned nibble = pattern[i] == 'y' ? 8 | (bits & 3) : bits & 15;
            into[i] = "0123456789ABCDEF"[nibble];
            bits >>= 4;
        }
    }

    /// `count` hexadecimal digits in lower case.
    void hexadecimal(std::size_t count, std::string& into)
    {
        into.resize(count);
        std::uint64_t bits = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (i % 16 == 0) bits = engine_();
            into[i] = "0123456789abcdef"[bits & 15];
            bits >>= 4;
        }
    }

private:
    std::mt19937_64 engine_;
};

} // namespace vorn
