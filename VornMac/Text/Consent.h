#pragma once

#include <string>
#include <vector>

namespace vorn {

/// What the user agrees to: the whole text, and the version under which the agreement is kept and sent. To change a
/// word that says what is uploaded is to change the version: every user is asked anew.
struct Consent {
    static constexpr const char* termsVersion = "vorn-mac-nimbrel-1";

    struct Section {
        std::string heading;
        std::vector<std::string> points;
    };

    std::string title;
    std::string subtitle;
    std::string line; ///< both, as one line of a terminal
    Section reads;
    Section neverReads;
    Section next;

    // What the user confirms.
    std::string understandsUpload;
    std::string agreesToShare;

    std::string primary; ///< leads on once both are confirmed
    std::string caption; ///< of the example beside it
};

/// The consent to an upload that earns `reward`. Threads: any.
Consent consentFor(const std::string& reward);

/// Where it is kept that the user with `userId` agreed: a key of the user's defaults.
std::string consentKey(const std::string& userId);

} // namespace vorn
