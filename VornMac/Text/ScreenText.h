#pragma once

#include <string>
#include <vector>

namespace vorn {

/// How things stand, shown by the symbol beside a status.
enum class Tone { waiting, good, warning, bad };

/// The same for a screen reader.
const char* toneText(Tone tone);

/// One line of state. Empty if there is nothing to say.
struct StatusText {
    Tone tone = Tone::waiting;
    std::string text{};
    bool operator==(const StatusText&) const = default;
};

/// The texts of a screen, part by part. A screen only lays them out, and does not show an empty part. A value.
struct ScreenText {
    std::string title{};
    std::string subtitle{};
    std::string heading{};            ///< above the steps
    std::vector<std::string> lead{};  ///< paragraphs under the title
    std::vector<std::string> steps{}; ///< what the user does, in order
    StatusText status{};
    StatusText remark{};              ///< a note under the content
    std::vector<std::string> hints{}; ///< advice or reassurance; the most important first
    std::string note{};               ///< in small print

    // Labels of buttons.
    std::string retry{};
    std::string primary{}; ///< continues
    std::string back{};

    std::string caption{}; ///< under the panel beside the form

    bool operator==(const ScreenText&) const = default;
};

} // namespace vorn
