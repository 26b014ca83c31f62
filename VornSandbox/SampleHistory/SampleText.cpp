#include "VornSandbox/SampleHistory/SampleText.h"

#include "VornSandbox/SampleHistory/SampleData.h"

#include <nlohmann/json.hpp>

#include <map>
#include <vector>

namespace vorn {
namespace {

using Strings = std::vector<std::string>;

/// What either side of a conversation with the assistant says in one language.
struct Language {
    explicit Language(const nlohmann::json& from)
        : prompts(from.at("prompts").get<Strings>()), replies(from.at("replies").get<Strings>())
    {
    }

    Strings prompts;
    Strings replies;
};

struct Texts {
    explicit Texts(const nlohmann::json& from)
        : english(from), chatter(from.at("chatter").get<Strings>()), links(from.at("links").get<Strings>())
    {
        for (const auto& language : from.at("languages")) others.emplace_back(language);
        from.at("words").get_to(words);
    }

    Language english;
    std::vector<Language> others; ///< right to left, without spaces, with combining marks, …
    Strings chatter;
    Strings links;
    std::map<std::string, Strings, std::less<>> words; ///< by the letter that stands for one of them
};

const Texts& texts()
{
    static const Texts texts(nlohmann::json::parse(sampleData::texts));
    return texts;
}

constexpr unsigned otherLanguagePerMille = 80;

/// Puts a full stop after a lower-case ASCII letter or a digit, and then `separator`.
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
    const bool isForeign = voice != SampleVoice::chatter && random_.chance(otherLanguagePerMille);
    const Language& language = isForeign ? random_.pick(std::span(texts().others)) : texts().english;
    const Strings& patterns = voice == SampleVoice::prompt  ? language.prompts
                              : voice == SampleVoice::reply ? language.replies
                                                            : texts().chatter;
    int sentences = random_.chance(450) ? 2 : 1;
    if (voice == SampleVoice::reply && random_.chance(450)) ++sentences;
    for (int i = 0; i < sentences; ++i) {
        if (i > 0) endSentence(i == 2 ? '\n' : ' ', into);
        sentence(random_.pick(std::span(patterns)), into);
    }
}

void SampleText::sentence(std::string_view pattern, std::string& into)
{
    while (true) {
        const std::size_t at = pattern.find('#');
        into += pattern.substr(0, at);
        if (at == std::string_view::npos) return;
        into += random_.pick(std::span(texts().words.find(pattern.substr(at + 1, 1))->second));
        pattern.remove_prefix(at + 2);
    }
}

void SampleText::link(std::string& into)
{
    into.assign(random_.pick(std::span(texts().links)));
    if (!random_.chance(600)) return;
    std::string id;
    random_.hexadecimal(11, id);
    into += "?id=" + id;
    if (random_.chance(300)) into += "&utm_source=messages";
}

} // namespace vorn
