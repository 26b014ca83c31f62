#pragma once

#include "Tools/Terminal/LinkPhase.h"
#include "Tools/Terminal/Terminal.h"

#include <optional>
#include <string>

namespace vorn {

/// Tells the user in a terminal how linking goes on. Threads: one at a time.
class LinkPrinter {
public:
    /// `terminal` must outlive it; `background` is the user's word about it.
    LinkPrinter(const Terminal& terminal, std::optional<TerminalOptions::Background> background);

    /// Throws `std::length_error` for a code that cannot be drawn.
    void show(const LinkPhase& phase);

private:
    void tell(const LinkPhase::Loading& loading);
    void tell(const LinkPhase::Showing& showing);
    void tell(const LinkPhase::Scanned& scanned);
    void tell(const LinkPhase::Rejected& rejected);
    void tell(const LinkPhase::Failed& failed);
    void draw(const std::string& qrPayload) const;

    const Terminal& terminal_;
    QRCodeText::Ink ink_;
    bool explained_ = false;
    std::string lastFailure_; ///< said and not over yet; empty when there is none
};

} // namespace vorn
