#pragma once

#include "VornSandbox/SampleHistory/SampleRandom.h"

#include <string>
#include <string_view>

namespace vorn {

/// Who speaks to whom: the user to the assistant, the assistant to the user, or people to each other.
enum class SampleVoice { prompt, reply, chatter };

/// Composes messages that read like a person chatting with an assistant or with friends. Threads: one at a time.
class SampleText {
public:
    explicit SampleText(SampleRandom& random) : random_(random) {}

    /// A new text in `into`: one to three sentences, mostly in English. Holds no link and nothing that looks like one,
    /// and neither begins nor ends with white space.
    void compose(SampleVoice voice, std::string& into);

    /// A web address. It ends in a letter or a digit, so that all link detectors agree on where it ends.
    void link(std::string& into);

private:
    void sentence(std::string_view pattern, std::string& into);

    SampleRandom& random_;
};

} // namespace vorn
