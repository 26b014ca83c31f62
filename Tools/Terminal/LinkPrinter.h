#pragma once

#include "Tools/Terminal/Terminal.h"
#include "VornMac/Text/Phases.h"

#include <optional>
#include <string>

namespace vorn {

/// Shows the progress of linking in a terminal. Threads: one at a time.
class LinkPrinter {
public:
    /// `terminal` must outlive it; `background` is the user's choice.
    LinkPrinter(const Terminal& terminal, std::optional<TerminalOptions::Background> background);

    /// Draws a code below all text about it, so that a code of 23 lines fits a window of 24, with the cursor below.
    /// Throws `CommandFailure` for a code that cannot be drawn at all.
    void show(const LinkPhase& phase, const std::optional<std::string>& qrPayload);

private:
    void tellLoading() const;
    void tellCode(const std::string& qrPayload);
    void tellFailure(const std::string& text);
    QRCodeText codeOf(const std::string& qrPayload) const;
    void draw(const QRCodeText& code) const;

    const Terminal& terminal_;
    QRCodeText::Ink ink_;
    bool explained_ = false;
    std::string lastFailure_; ///< the failure shown since the last code; empty if there is none
};

} // namespace vorn
