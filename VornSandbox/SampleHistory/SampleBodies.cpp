#include "VornSandbox/SampleHistory/SampleBodies.h"

#include "VornSandbox/SampleHistory/BinaryPropertyList.h"

#include <algorithm>

namespace vorn::sampleBodies {
namespace {

using Array = PropertyListValue::Array;
using Dictionary = PropertyListValue::Dictionary;

constexpr std::string_view partName = "__kIMMessagePartAttributeName";
constexpr std::size_t placeholderBytes = 3; // of U+FFFC in UTF-8

PropertyListValue whole(std::int64_t value)
{
    return {value};
}

PropertyListValue string(std::string_view text)
{
    return {std::string(text)};
}

PropertyListValue keyedArchive(Array objects)
{
    return {Dictionary{{"$version", whole(100'000)},
                       {"$archiver", string("NSKeyedArchiver")},
                       {"$top", {Dictionary{{"root", {Dictionary{{"CF$UID", whole(1)}}}}}}},
                       {"$objects", {std::move(objects)}}}};
}

TextAttribute part(std::int64_t number)
{
    return {partName, number};
}

/// What the data detectors found: kept beside the link so that it need not be looked for again.
ByteBuffer detected(std::string_view link)
{
    return binaryPropertyList(keyedArchive({string("$null"),
                                            {Dictionary{{"MS", whole(1)}, {"V", string("HttpURL")}}},
                                            string(link),
                                            {Array{whole(0), whole(static_cast<std::int64_t>(link.size()))}}}));
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
    return binaryPropertyList({Dictionary{{"amc", whole(1)},
                                          {"cmmS", whole(0)},
                                          {"cmmAS", whole(0)},
                                          {"ust", {true}},
                                          {"hbr", {false}},
                                          {"oui", {true}}}});
}

ByteBuffer reactionSummary(std::string_view quoted)
{
    return binaryPropertyList({Dictionary{{"amc", whole(0)}, {"ams", string(quoted)}, {"ust", {true}}}});
}

ByteBuffer editSummary(const ByteBuffer& before, const ByteBuffer& after, std::int64_t secondsOfEdit)
{
    const Array history{{Dictionary{{"t", {before}}, {"d", whole(secondsOfEdit - 60)}}},
                        {Dictionary{{"t", {after}}, {"d", whole(secondsOfEdit)}}}};
    return binaryPropertyList(
        {Dictionary{{"amc", whole(1)},
                    {"ust", {true}},
                    {"ep", {Array{whole(0)}}},
                    {"ec", {Dictionary{{"0", {history}}}}},
                    {"otr", {Dictionary{{"0", {Dictionary{{"lo", whole(0)}, {"le", whole(1)}}}}}}}}});
}

ByteBuffer retractedSummary()
{
    return binaryPropertyList(
        {Dictionary{{"amc", whole(1)},
                    {"ust", {true}},
                    {"rp", {Array{whole(0)}}},
                    {"otr", {Dictionary{{"0", {Dictionary{{"lo", whole(0)}, {"le", whole(1)}}}}}}}}});
}

ByteBuffer linkPayload(std::string_view link, SampleRandom& random)
{
    ByteBuffer icon(static_cast<std::size_t>(random.between(100, 700)));
    for (std::byte& byte : icon) byte = static_cast<std::byte>(random.below(256));
    return binaryPropertyList(keyedArchive(
        {string("$null"),
         {Dictionary{{"richLinkMetadata", {Dictionary{{"CF$UID", whole(2)}}}}, {"richLinkIsPlaceholder", {false}}}},
         {Dictionary{{"URL", string(link)},
                     {"originalURL", string(link)},
                     {"title", string("A page worth reading")},
                     {"summary", string("What it says in a few words, as its author put it.")},
                     {"siteName", string("Example")},
                     {"icon", {icon}},
                     {"version", whole(1)}}}}));
}

} // namespace vorn::sampleBodies
