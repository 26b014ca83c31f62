#include "NimbrelExportKit/Links/URLTail.h"

#include "NimbrelExportKit/Links/Scalars.h"

#include <algorithm>
#include <array>

namespace vorn::links {
namespace {

constexpr auto npos = std::string_view::npos;

constexpr char openingOf(char closing)
{
    return closing == ')' ? '(' : closing == ']' ? '[' : '{';
}

/// The open brackets of the tail so far. Nesting deeper than in any address ends the tail.
class OpenBrackets {
public:
    bool open(char bracket, std::size_t at)
    {
        if (depth_ == open_.size()) return false;
        open_[depth_++] = {bracket, at};
        return true;
    }
    bool close(char bracket)
    {
        if (depth_ == 0 || open_[depth_ - 1].bracket != openingOf(bracket)) return false;
        --depth_;
        anyClosed_ = true;
        return true;
    }
    bool anyClosed() const { return anyClosed_; }
    /// The place of the outermost bracket that was never closed.
    std::size_t firstOpen() const { return depth_ == 0 ? npos : open_[0].at; }

private:
    struct Open {
        char bracket = '\0';
        std::size_t at = 0;
    };
    std::array<Open, 16> open_{};
    bool anyClosed_ = false;
    std::size_t depth_ = 0;
};

bool isParticle(char32_t scalar)
{
    return std::u32string_view(U"をはがにでとものへや").find(scalar) != npos;
}

/// Whether the text after a host's slash is a sentence that follows without a space: it begins with a grammatical
/// particle, or runs up to punctuation of its script.
bool isSentence(std::string_view text, std::size_t at)
{
    for (std::size_t next = at; next < text.size();) {
        const Scalar scalar = scalarAt(text, next);
        if (scriptOf(scalar.value) != Script::unspaced)
            return next > at && scalar.value >= 0x3001 && scriptOf(scalar.value) == Script::none;
        if (next == at && isParticle(scalar.value)) return true;
        next += scalar.size;
    }
    return false;
}

class Tail {
public:
    Tail(std::string_view text, std::size_t begin, char before)
        : text_(text), begin_(begin), end_(begin), before_(before)
    {
    }

    std::size_t end()
    {
        while (end_ < text_.size()) {
            const std::size_t size = isASCII(text_[end_]) ? acceptASCII(text_[end_]) : acceptOther();
            if (size == 0) break;
            end_ += size;
        }
        if (const std::size_t open = brackets_.firstOpen(); open != npos) end_ = std::min(end_, open);
        trim();
        return end_;
    }

private:
    /// `acceptASCII` and `acceptOther` return how many bytes at `end_` belong to the tail; 0 if it ends there.
    std::size_t acceptASCII(char c)
    {
        if (c <= ' ' || c == 0x7F || c == '<' || c == '>' || c == '`' || c == '\\') return 0;
        switch (c) {
        case '(':
        case '[':
        case '{': return brackets_.open(c, end_) ? 1 : 0;
        case ')':
        case ']':
        case '}': return brackets_.close(c) || isSurplus(c) ? 1 : 0;
        case '\'': apostrophes_ += 1; return before_ == '\'' ? 0 : 1;
        case '"': return quotationMark();
        case '?':
        case '#': inPath_ = false; return 1;
        case '|': return inPath_ ? 0 : 1; // separates the columns of a table, or the values of a query
        default: return 1;
        }
    }

    /// Whether an unmatched closing bracket is a slip inside the address: matched brackets precede it, and more text
    /// follows it.
    bool isSurplus(char bracket) const
    {
        if (!brackets_.anyClosed() || before_ == openingOf(bracket) || end_ + 1 == text_.size()) return false;
        if (text_[end_ - 1] == '.') return false; // the address in "(see example.com/a_(b).)" has ended
        const char next = text_[end_ + 1];
        return isAlphanumeric(next) || std::string_view("+-_=&/").find(next) != npos;
    }

    std::size_t acceptOther() const
    {
        const Scalar scalar = scalarAt(text_, end_);
        const bool afterWord = isAlphanumeric(text_[end_ - 1]);
        switch (scriptOf(scalar.value)) {
        case Script::none: return scalar.value > 0x3000 && isBeforeFileEnding(scalar) ? scalar.size : bracketedTitle();
        case Script::unspaced:
            if (end_ == begin_ + 1 && text_[begin_] == '/' && isSentence(text_, end_)) return 0;
            [[fallthrough]];
        case Script::rightToLeft: return afterWord ? 0 : scalar.size;
        default: return scalar.size;
        }
    }

    /// Whether `mark` ends the name of a file and its extension follows: "/何？.png".
    bool isBeforeFileEnding(const Scalar& mark) const
    {
        const std::size_t dot = end_ + mark.size;
        return dot + 1 < text_.size() && text_[dot] == '.' && isLetter(text_[dot + 1]);
    }

    /// The size of a title in brackets or quotation marks of its script that begins a path segment after the first, as
    /// in addresses of encyclopedia articles; 0 if there is none. Directly after the host they belong to the sentence.
    std::size_t bracketedTitle() const
    {
        constexpr std::u32string_view opening = U"《〈「『【“";
        constexpr std::u32string_view closing = U"》〉」』】”";
        const Scalar bracket = scalarAt(text_, end_);
        const std::size_t kind = opening.find(bracket.value);
        if (kind == npos || end_ == begin_ + 1 || text_[end_ - 1] != '/') return 0;
        for (std::size_t at = end_ + bracket.size; at < text_.size();) {
            const Scalar scalar = scalarAt(text_, at);
            at += scalar.size;
            if (scalar.value == closing[kind]) return at - end_;
            if (scriptOf(scalar.value) != Script::unspaced) return 0;
        }
        return 0;
    }

    /// The size of a quoted word inside the tail, or of the mark after the seconds of a geographic position; 0 for
    /// other quotation marks: after a slash, or if one precedes the link, they belong to the text.
    std::size_t quotationMark() const
    {
        const auto previous = static_cast<unsigned char>(text_[end_ - 1]);
        const bool afterWord = isAlphanumeric(previous) || previous == '_';
        if (before_ == '"' || !afterWord) return 0;
        std::size_t at = end_ + 1;
        if (isDigit(previous) && at < text_.size() && std::string_view("NSEW").find(text_[at]) != npos) return 1;
        while (at < text_.size() && isAlphanumeric(text_[at])) ++at;
        return at > end_ + 1 && at < text_.size() && text_[at] == '"' ? at + 1 - end_ : 0;
    }

    void trim()
    {
        trimPossessive();
        while (end_ > begin_) {
            const std::size_t size = isASCII(text_[end_ - 1]) ? trailingASCII() : trailingOther();
            if (size == 0) break;
            end_ -= size;
        }
    }

    /// The "'s" of "example.com/anna's picture".
    void trimPossessive()
    {
        const std::string_view tail = text_.substr(begin_, end_ - begin_);
        const std::size_t size = tail.ends_with("'s") ? 2 : tail.ends_with("’s") ? 4 : 0;
        const bool wordFollows =
            end_ + 1 < text_.size() && text_[end_] == ' ' && (isLetter(text_[end_ + 1]) || !isASCII(text_[end_ + 1]));
        if (size > 0 && tail.size() > size && wordFollows) end_ -= size;
    }

    std::size_t trailingASCII()
    {
        switch (text_[end_ - 1]) {
        case ';': return std::max<std::size_t>(1, characterReference());
        case '.':
        case ',':
        case ':':
        case '!':
        case '?':
        case '*':
        case '|':
        case '@':
        case '^': return 1;
        case '\'': return apostrophes_-- % 2 != 0 ? 1 : 0;
        case '#': return end_ - 1 == begin_ ? 1 : 0;
        case '_':
        case '~': return before_ == text_[end_ - 1] ? 1 : 0;
        default: return 0;
        }
    }

    /// The size of a character reference such as "&gt;" at the end, in text copied from a web page; 0 if there is none.
    std::size_t characterReference() const
    {
        std::size_t at = end_ - 1;
        while (at > begin_ && isLetter(text_[at - 1])) --at;
        return at > begin_ && at < end_ - 1 && text_[at - 1] == '&' ? end_ - at + 1 : 0;
    }

    /// The size of a dash, or of emoji that decorate a word, at the end; 0 if there is none. Emoji after a slash belong
    /// to the address.
    std::size_t trailingOther() const
    {
        std::size_t start = end_;
        for (; start > begin_ && !isASCII(text_[start - 1]);) {
            const Scalar scalar = scalarBefore(text_, start);
            const Script script = scriptOf(scalar.value);
            if (script == Script::dash) return end_ - start + scalar.size;
            if (script != Script::symbol && script != Script::joiner) return 0;
            start -= scalar.size;
        }
        return start > begin_ && isAlphanumeric(text_[start - 1]) ? end_ - start : 0;
    }

    std::string_view text_;
    std::size_t begin_;
    std::size_t end_;
    char before_;
    OpenBrackets brackets_;
    std::size_t apostrophes_ = 0;
    bool inPath_ = true;
};

/// The end of a shortened link's code; `at` if there is none, or a query follows it. Codes are letters and digits;
/// anything else next to them belongs to the sentence.
std::size_t shortCodeEnd(std::string_view text, std::size_t at, std::string_view host)
{
    if (host != "t.co" || text[at] != '/') return at;
    std::size_t end = at + 1;
    while (end < text.size() && isAlphanumeric(text[end])) ++end;
    return end == at + 1 || (end < text.size() && text[end] == '?') ? at : end;
}

} // namespace

std::size_t tailEnd(std::string_view text, std::size_t at, char before, std::string_view host)
{
    const std::size_t shortEnd = shortCodeEnd(text, at, host);
    return shortEnd > at ? shortEnd : Tail(text, at, before).end();
}

} // namespace vorn::links
