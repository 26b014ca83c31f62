#pragma once

#include <string>
#include <vector>

namespace vorn {

/// How things stand, which the symbol beside a status says.
enum class Tone { waiting, good, warning, bad };

/// The same for a screen reader.
const char* toneText(Tone tone);

/// One line of state. Empty where there is nothing to say.
struct StatusText {
    Tone tone = Tone::waiting;
    std::string text{};
    bool operator==(const StatusText&) const = default;
};

/// What a screen says, by the part that says it. Screens lay it out and choose no words; a part that is empty is not
/// shown. A value.
struct ScreenText {
    std::string title{};
    std::string subtitle{};
    std::string heading{};            ///< of the steps
    std::vector<std::string> lead{};  ///< paragraphs under the title
    std::vector<std::string> steps{}; ///< what the user does, in order
    StatusText status{};
    StatusText remark{};              ///< what more there is to know, under the content
    std::vector<std::string> hints{}; ///< what may help or comfort; the first matters most
    std::string note{};               ///< in small print

    // Labels of buttons.
    std::string retry{};
    std::string primary{}; ///< leads on
    std::string back{};

    std::string caption{}; ///< of the panel beside the form

    bool operator==(const ScreenText&) const = default;
};

} // namespace vorn
