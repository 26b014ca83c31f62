#include "VornSandbox/SampleHistory/SampleText.h"

#include "VornSandbox/SampleHistory/SampleVocabulary.h"

namespace vorn {
namespace {

constexpr unsigned otherLanguagePerMille = 80;

/// Puts a full stop after a letter or digit, and then `separator`.
void endSentence(char separator, std::string& into)
{
    const char last = into.back();
    const bool isOpen = (last >= 'a' && last <= 'z') || (last >= '0' && last <= '9');
    if (isOpen) into += '.';
    into += separator;
}

} // namespace

void SampleText::compose(SampleVoice voice, std::string& into)
{
    into.clear();
    auto patterns = voice == SampleVoice::prompt  ? sampleVocabulary::prompts()
                    : voice == SampleVoice::reply ? sampleVocabulary::replies()
                                                  : sampleVocabulary::chatter();
    if (voice != SampleVoice::chatter && random_.chance(otherLanguagePerMille)) {
        const auto& language = random_.pick(sampleVocabulary::otherLanguages());
        patterns = voice == SampleVoice::prompt ? language.prompts : language.replies;
    }
    int sentences = random_.chance(450) ? 2 : 1;
    if (voice == SampleVoice::reply && random_.chance(450)) ++sentences;
    for (int i = 0; i < sentences; ++i) {
        if (i > 0) endSentence(i == 2 ? '\n' : ' ', into);
        sentence(random_.pick(patterns), into);
    }
}

void SampleText::sentence(std::string_view pattern, std::string& into)
{
    while (true) {
        const std::size_t at = pattern.find('#');
        into += pattern.substr(0, at);
        if (at == std::string_view::npos) return;
        into += random_.pick(sampleVocabulary::list(pattern[at + 1]));
        pattern.remove_prefix(at + 2);
    }
}

void SampleText::link(std::string& into)
{
    into.assign(random_.pick(sampleVocabulary::linkPaths()));
    if (!random_.chance(600)) return;
    std::string id;
    random_.hexadecimal(11, id);
    into += "?id=" + id;
    if (random_.chance(300)) into += "&utm_source=messages";
}

} // namespace vorn
