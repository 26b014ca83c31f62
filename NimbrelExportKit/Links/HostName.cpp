#include "NimbrelExportKit/Links/HostName.h"

#include "NimbrelExportKit/Links/Scalars.h"
#include "NimbrelExportKit/Links/TopLevelDomains.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include <arpa/inet.h>

namespace vorn::links {
namespace {

constexpr std::size_t longestLabel = 63;
constexpr std::size_t longestName = 253;
/// The most bytes in a label of legal length: no need to walk back over longer ones.
constexpr std::size_t longestLabelInBytes = 4 * longestLabel;
constexpr auto npos = std::string_view::npos;

struct Label {
    std::string_view text;
    std::size_t scalars = 0;
    std::size_t foreignAt = npos; ///< where another script begins after ASCII, relative to the label
    bool ascii = true;
    bool digits = true;
    bool underscore = false;
    bool hyphen = false;

    bool isEncoded() const { return text.starts_with("xn--"); }
    bool hasEdge(char c) const { return text.front() == c || text.back() == c; }
};

/// Whether `script`, which a name may contain, begins a run of another kind after ASCII.
bool isForeign(Script script) noexcept
{
    return script != Script::latin && script != Script::joiner;
}

Label readLabel(std::string_view text, std::size_t begin)
{
    Label label;
    std::size_t at = begin;
    for (; at < text.size(); ++label.scalars) {
        if (const char c = text[at]; isASCII(c)) {
            if (!isAlphanumeric(c) && c != '-' && c != '_') break;
            label.digits = label.digits && isDigit(c);
            label.underscore = label.underscore || c == '_';
            label.hyphen = label.hyphen || c == '-';
            ++at;
            continue;
        }
        const Scalar scalar = scalarAt(text, at);
        const Script script = scriptOf(scalar.value);
        if (script == Script::none || script == Script::dash) break;
        if (label.ascii && isForeign(script)) label.foreignAt = at - begin;
        label.ascii = label.digits = false;
        at += scalar.size;
    }
    label.text = text.substr(begin, at - begin);
    return label;
}

/// How many bytes of a label after the first are a top-level domain directly followed by other text; 0 if none are.
std::size_t topLevelBeforeOtherText(const Label& label)
{
    if (label.ascii) return 0;
    if (label.foreignAt != npos && label.foreignAt > 0) {
        return isTopLevelDomain(label.text.substr(0, label.foreignAt)) ? label.foreignAt : 0;
    }
    const std::size_t size = unspacedTopLevelDomainPrefix(label.text);
    return size < label.text.size() ? size : 0;
}

/// Whether `label`, after "example.com.", begins the next sentence, with no space before it: "example.com.Then we met".
/// Names in program text look the same ("java.io.File"), so only "com" and "org" count. A label of two letters may be a
/// country's top-level domain.
bool beginsSentence(std::string_view topLevel, std::string_view label, std::string_view after)
{
    if (topLevel != "com" && topLevel != "org") return false;
    const auto isLower = [](char c) { return c >= 'a' && c <= 'z'; };
    if (label[0] < 'A' || label[0] > 'Z' || !std::ranges::all_of(label.substr(1), isLower)) return false;
    return after.starts_with('\'') || (after.starts_with(' ') && (label.size() != 2 || !isTopLevelDomain(label)));
}

bool isOctet(std::string_view digits)
{
    if (digits.starts_with('0')) return digits.size() == 1;
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return digits.size() <= 3 && error == std::errc() && end == digits.data() + digits.size() && value <= 255;
}

/// A name while it is read, label by label.
class Name {
public:
    void add(const Label& label)
    {
        ++labels_;
        scalars_ += label.scalars + 1;
        // A label begins and ends with a letter or digit; an encoded one is ASCII throughout.
        wellFormed_ = wellFormed_ && label.scalars <= longestLabel && !label.hasEdge('-') && !label.hasEdge('_') &&
                      (label.ascii || !label.isEncoded());
        octets_ = octets_ && label.digits && isOctet(label.text);
        underscoreBeforeLast_ = std::exchange(last_, label).underscore;
    }

    Host::Kind kind() const
    {
        if (labels_ == 0 || !wellFormed_ || scalars_ > longestName + 1 || last_.underscore) return Host::Kind::none;
        if (labels_ == 1) return last_.foreignAt == npos ? Host::Kind::singleName : Host::Kind::none;
        if (labels_ == 4 && octets_) return Host::Kind::address;
        if (underscoreBeforeLast_ || last_.digits) return Host::Kind::none;
        if (isTopLevelDomain(last_.text)) return Host::Kind::known;
        return last_.hyphen && !last_.isEncoded() ? Host::Kind::none : Host::Kind::unknown;
    }

    std::size_t labels() const { return labels_; }
    const Label& last() const { return last_; }

private:
    Label last_;
    std::size_t labels_ = 0;
    std::size_t scalars_ = 0;
    bool wellFormed_ = true;
    bool octets_ = true;
    bool underscoreBeforeLast_ = false;
};

/// An IPv6 address in square brackets.
Host readLiteral(std::string_view text, std::size_t at)
{
    std::array<char, INET6_ADDRSTRLEN> address{};
    std::size_t size = 0;
    std::size_t end = at + 1;
    for (; end < text.size() && size + 1 < address.size(); ++end) {
        const char c = text[end];
        if (c != ':' && c != '.' && !isHexDigit(c)) break;
        address[size++] = c;
    }
    in6_addr parsed{};
    const bool valid = end < text.size() && text[end] == ']' && inet_pton(AF_INET6, address.data(), &parsed) == 1;
    return {.begin = at, .end = end + 1, .readTo = end, .kind = valid ? Host::Kind::address : Host::Kind::none};
}

/// Whether the name goes on after the label that ends at `end`.
bool hasAnotherLabel(std::string_view text, std::size_t end)
{
    return end + 1 < text.size() && text[end] == '.' && !readLabel(text.substr(0, end + 5), end + 1).text.empty();
}

/// `label`, which begins at `at` and ends the name, without what belongs to the sentence: a hyphen after the whole name
/// is a dash, and "_example.com_" is emphasised.
Label withoutPunctuation(const Label& label, std::string_view text, std::size_t at, char before)
{
    const std::size_t last = label.text.find_last_not_of(before == '_' ? "-_" : "-");
    if (last == npos || last + 1 >= label.text.size()) return label;
    return readLabel(text.substr(0, at + last + 1), at);
}

} // namespace

Host readHost(std::string_view text, std::size_t at, char before)
{
    if (at < text.size() && text[at] == '[') return readLiteral(text, at);
    Name name;
    const std::size_t begin = at;
    std::size_t end = at;
    for (;;) {
        Label label = readLabel(text, at);
        if (label.text.empty()) break;
        end = at + label.text.size();
        const std::size_t cut = name.labels() > 0 ? topLevelBeforeOtherText(label) : 0;
        if (cut > 0) {
            name.add(readLabel(text.substr(0, at + cut), at));
            end = at + cut;
            break;
        }
        const bool goesOn = hasAnotherLabel(text, end);
        if (!goesOn && name.labels() > 1 && beginsSentence(name.last().text, label.text, text.substr(end))) {
            end = at - 1;
            break;
        }
        if (!goesOn && name.labels() > 0) {
            label = withoutPunctuation(label, text, at, before);
            end = at + label.text.size();
        }
        name.add(label);
        if (!goesOn) break;
        at = end + 1;
    }
    // Text before "://" is not a host but the scheme of an address that begins there.
    const std::size_t readTo = text.substr(end).starts_with("://") ? at : end;
    return {.begin = begin,
            .end = end,
            .readTo = readTo,
            .kind = name.kind(),
            .labels = name.labels(),
            .topLevel = name.last().text};
}

std::size_t labelStart(std::string_view text, std::size_t end, std::size_t floor) noexcept
{
    const std::size_t lowest = std::max(floor, end - std::min(end, longestLabelInBytes + 1));
    Script kind = Script::joiner; // not known yet
    std::size_t start = end;
    while (start > lowest) {
        const Scalar scalar = scalarBefore(text, start);
        if (scalar.value < 0x80) {
            const bool neutral = isDigit(scalar.value) || scalar.value == U'-' || scalar.value == U'_';
            if (!neutral && !isLetter(scalar.value)) break;
            if (!neutral && kind != Script::latin && kind != Script::joiner && kind != Script::symbol) break;
            kind = kind == Script::joiner || !neutral ? Script::latin : kind;
        } else {
            const Script script = scriptOf(scalar.value);
            if (script == Script::none || script == Script::dash) break;
            if (script != Script::joiner) {
                if (kind != Script::joiner && kind != script) break;
                kind = script;
            }
        }
        start -= scalar.size;
    }
    return start;
}

} // namespace vorn::links
