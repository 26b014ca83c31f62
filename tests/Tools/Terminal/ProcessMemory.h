#pragma once

#include <cstddef>
#include <string>

namespace vorn::testing {

/// A text to search for in this process's memory, stored so that the search does not find it there.
class HiddenText {
public:
    explicit HiddenText(const std::string& text);

    std::size_t size() const noexcept { return hidden_.size(); }
    char at(std::size_t index) const noexcept { return static_cast<char>(hidden_[index] ^ mask); }

private:
    static constexpr char mask = 0x55;
    std::string hidden_;
};

/// How often `text` occurs in the memory of this process: in its heap, its stacks and its data. Linux only.
std::size_t copiesInMemory(const HiddenText& text);

} // namespace vorn::testing
