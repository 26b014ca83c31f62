#pragma once

#include "VornSandbox/SampleHistory/SampleHistory.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vorn {

/// A row of table `handle`; its ROWID is its place in the list, from 1.
struct SampleHandle {
    std::string id;
    std::string service;
    bool isAssistant = false;
};

/// A row of table `chat`; its ROWID is its place in the list, from 1.
struct SampleChat {
    std::string guid;
    std::string identifier; ///< the participant, or "chat" and a number for a group
    std::string service;
    std::string displayName{}; ///< of a named group
    std::int64_t style = 45;
    std::vector<std::int64_t> handles{}; ///< ROWIDs of the participants other than the user
    unsigned weight = 1;                 ///< its share of the rows, relative to the others'
    bool withAssistant = false;          ///< one-to-one with the assistant: what an export reads

    bool isGroup() const { return style == 43; }
};

/// The people in a sample history, and their conversations. The user's own number and account are fixed.
struct SampleCast {
    std::vector<std::string> assistant; ///< its handles
    std::vector<SampleHandle> handles;
    std::vector<SampleChat> chats;

    /// Errors: `std::invalid_argument` when a handle is blank, given twice, or another person's.
    static SampleCast make(const SampleHistoryOptions& options);
};

} // namespace vorn
