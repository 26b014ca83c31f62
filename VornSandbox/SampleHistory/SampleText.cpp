#include "VornSandbox/SampleHistory/SampleText.h"

#include "VornSandbox/SampleHistory/SampleVocabulary.h"

namespace vorn {
namespace {

constexpr unsigned otherLanguagePerMille = 80;

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
    const auto sentences = voice == SampleVoice::reply ? random_.between(1, 3) : random_.between(1, 2);
    for (std::int64_t i = 0; i < sentences; ++i) {
        if (i > 0) into += i == 2 ? '\n' : ' ';
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
