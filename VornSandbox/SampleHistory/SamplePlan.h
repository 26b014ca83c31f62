#pragma once

#include "VornSandbox/SampleHistory/AttributedBody.h"
#include "VornSandbox/SampleHistory/SampleCast.h"
#include "VornSandbox/SampleHistory/SampleHistory.h"
#include "VornSandbox/SampleHistory/SampleMessage.h"
#include "VornSandbox/SampleHistory/SampleRandom.h"
#include "VornSandbox/SampleHistory/SampleText.h"
#include "VornSandbox/SampleHistory/SampleTimeline.h"

#include <deque>
#include <string>
#include <vector>

namespace vorn {

/// Decides, row by row and from the options alone, what a history contains, and counts what an export will find.
/// Threads: one at a time.
class SamplePlan {
public:
    SamplePlan(const SampleHistoryOptions& options, const SampleCast& cast);
    SamplePlan(const SamplePlan&) = delete;
    SamplePlan& operator=(const SamplePlan&) = delete;

    /// The next row, in order of ROWID; call it `options.messages` times. Valid until the next call.
    const SampleMessage& next();

    /// What has been planned so far.
    const SampleHistorySummary& summary() const { return summary_; }

private:
    /// Why an export leaves a row out; `none` for rows that it keeps.
    enum class Skip { none, reaction, system, unsent, empty, undated };

    /// A message that later ones may react to or answer.
    struct Earlier {
        std::string guid;
        std::string text;
    };
    struct Conversation {
        std::deque<Earlier> recent; ///< newest last
        bool lastFromMe = false;
    };

    void chooseChat(bool beginsSession);
    void address();
    Skip drawSkip();
    void fill(Skip skip);

    void react();
    void happen();
    void unsend();
    void leaveEmpty();
    void write();
    void attach();
    void addLink(std::string& shown);
    void answer();
    void store(std::string stored);

    const Earlier& earlier(); ///< there must be one
    void remember();
    void count(Skip skip);
    AttributedBodyKind drawKind();
    const SampleChat& chat() const { return cast_.chats[row_.chat]; }
    Conversation& conversation() { return conversations_[row_.chat]; }

    const SampleHistoryOptions& options_;
    const SampleCast& cast_;
    SampleRandom random_;
    SampleText text_;
    SampleTimeline timeline_;
    std::vector<Conversation> conversations_;
    SampleHistorySummary summary_;

    SampleMessage row_;
    std::string shown_; ///< the row's text as a reader sees it: no placeholders, no white space at its ends
    std::string link_;
};

} // namespace vorn
