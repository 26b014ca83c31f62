#pragma once

#include <string>
#include <vector>

namespace vorn {

/// What the user agrees to: the whole text, and the version under which the agreement is kept and sent. A change to
/// what the text says about the upload needs a new version: then every user is asked anew.
struct Consent {
    static constexpr const char* termsVersion = "vorn-mac-nimbrel-1";

    struct Section {
        std::string heading;
        std::vector<std::string> points;
    };

    std::string title;
    std::string subtitle;
    std::string line; ///< title and subtitle, as one line for a terminal
    Section reads;
    Section neverReads;
    Section next;

    // What the user confirms.
    std::string understandsUpload;
    std::string agreesToShare;

    std::string primary; ///< continues once both are confirmed
    std::string caption; ///< under the example conversation
};

/// The consent to an upload that earns `reward`. Threads: any.
Consent consentFor(const std::string& reward);

/// The key in the user defaults under which the agreement of the user with `userId` is kept.
std::string consentKey(const std::string& userId);

} // namespace vorn
