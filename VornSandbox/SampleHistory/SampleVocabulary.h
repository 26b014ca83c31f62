#pragma once

#include <span>
#include <string_view>

/// What the people of a sample history say. A '#' and a letter stand for a word of the list named beside it.
namespace vorn::sampleVocabulary {

using Words = std::span<const std::string_view>;

Words prompts() noexcept; ///< what a person asks the assistant, in English
Words replies() noexcept; ///< what it answers
Words chatter() noexcept; ///< what friends write to each other

/// Sentences of one other language for either side. Written right to left, without spaces, with combining marks, …
struct Language {
    std::string_view code;
    Words prompts;
    Words replies;
};
std::span<const Language> otherLanguages() noexcept;

/// The list behind a placeholder: #p places, #f food, #d days, #t times, #w people, #x topics, #n numbers, #e emoji,
/// #h headings of a list; empty for any other letter.
Words list(char placeholder) noexcept;

Words linkPaths() noexcept; ///< "https://…" without a query, ending in a letter

} // namespace vorn::sampleVocabulary
