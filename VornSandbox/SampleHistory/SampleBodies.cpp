#include "VornSandbox/SampleHistory/SampleBodies.h"

#include "VornSandbox/SampleHistory/BinaryPropertyList.h"

#include <algorithm>

namespace vorn::sampleBodies {
namespace {

constexpr std::string_view partName = "__kIMMessagePartAttributeName";
constexpr std::size_t placeholderBytes = 3; // of U+FFFC in UTF-8

/// `objects` begins with "$null"; its second is the root.
PropertyList keyedArchive(PropertyList objects)
{
    return {{"$version", 100'000},
            {"$archiver", "NSKeyedArchiver"},
            {"$top", {{"root", {{"CF$UID", 1}}}}},
            {"$objects", std::move(objects)}};
}

TextAttribute part(std::int64_t number)
{
    return {partName, number};
}

/// What the data detectors found: kept beside the link so that it need not be looked for again.
ByteBuffer detected(std::string_view link)
{
    const PropertyList range = PropertyList::array({0, link.size()});
    return binaryPropertyList(
        keyedArchive(PropertyList::array({"$null", {{"MS", 1}, {"V", "HttpURL"}}, std::string(link), range})));
}

std::vector<TextAttribute> linkAttributes(std::string_view link)
{
    return {part(0),
            {"__kIMLinkAttributeName", AttributeURL{std::string(link)}},
            {"__kIMDataDetectedAttributeName", detected(link)}};
}

} // namespace

ByteBuffer withBoldWord(std::string_view text, AttributedBodyKind kind)
{
    const std::size_t word = std::min(text.find(' '), text.size());
    std::vector<AttributeRun> runs{
        {utf16Length(text.substr(0, word)), {part(0), {"__kIMTextBoldAttributeName", std::int64_t{1}}}}};
    if (word < text.size()) runs.push_back({utf16Length(text.substr(word)), {part(0)}});
    return attributedBody(text, kind, runs);
}

ByteBuffer withLink(std::string_view text, std::string_view link, AttributedBodyKind kind)
{
    std::vector<AttributeRun> runs;
    std::size_t done = 0;
    for (std::size_t at = text.find(link); at != std::string_view::npos; at = text.find(link, done)) {
        if (at > done) runs.push_back({utf16Length(text.substr(done, at - done)), {part(0)}});
        runs.push_back({utf16Length(link), linkAttributes(link)});
        done = at + link.size();
    }
    if (done < text.size()) runs.push_back({utf16Length(text.substr(done)), {part(0)}});
    return attributedBody(text, kind, runs);
}

ByteBuffer withAttachments(std::string_view text, const std::vector<SampleAttachment>& attachments,
                           AttributedBodyKind kind)
{
    std::vector<AttributeRun> runs;
    runs.reserve(attachments.size() + 1);
    std::int64_t number = 0;
    for (const SampleAttachment& attachment : attachments) {
        runs.push_back({1,
                        {{"__kIMFileTransferGUIDAttributeName", attachment.guid},
                         {"__kIMFilenameAttributeName", attachment.transferName},
                         {"__kIMBaseWritingDirectionAttributeName", std::int64_t{-1}},
                         part(number++)}});
    }
    const std::string_view rest = text.substr(placeholderBytes * attachments.size());
    if (!rest.empty()) runs.push_back({utf16Length(rest), {part(number)}});
    return attributedBody(text, kind, runs);
}

ByteBuffer plainSummary()
{
    return binaryPropertyList({{"amc", 1}, {"cmmS", 0}, {"cmmAS", 0}, {"ust", true}, {"hbr", false}, {"oui", true}});
}

ByteBuffer reactionSummary(std::string_view quoted)
{
    return binaryPropertyList({{"amc", 0}, {"ams", std::string(quoted)}, {"ust", true}});
}

ByteBuffer editSummary(const ByteBuffer& before, const ByteBuffer& after, std::int64_t secondsOfEdit)
{
    const PropertyList history = PropertyList::array(
        {{{"t", dataOf(before)}, {"d", secondsOfEdit - 60}}, {{"t", dataOf(after)}, {"d", secondsOfEdit}}});
    return binaryPropertyList({{"amc", 1},
                               {"ust", true},
                               {"ep", PropertyList::array({0})},
                               {"ec", {{"0", history}}},
                               {"otr", {{"0", {{"lo", 0}, {"le", 1}}}}}});
}

ByteBuffer retractedSummary()
{
    return binaryPropertyList(
        {{"amc", 1}, {"ust", true}, {"rp", PropertyList::array({0})}, {"otr", {{"0", {{"lo", 0}, {"le", 1}}}}}});
}

ByteBuffer linkPayload(std::string_view link, SampleRandom& random)
{
    ByteBuffer icon(static_cast<std::size_t>(random.between(100, 700)));
    for (std::byte& byte : icon) byte = static_cast<std::byte>(random.below(256));
    const PropertyList root{{"richLinkMetadata", {{"CF$UID", 2}}}, {"richLinkIsPlaceholder", false}};
    const PropertyList metadata{{"URL", std::string(link)},
                                {"originalURL", std::string(link)},
                                {"title", "A page worth reading"},
                                {"summary", "What it says in a few words, as its author put it."},
                                {"siteName", "Example"},
                                {"icon", dataOf(icon)},
                                {"version", 1}};
    return binaryPropertyList(keyedArchive(PropertyList::array({"$null", root, metadata})));
}

} // namespace vorn::sampleBodies
