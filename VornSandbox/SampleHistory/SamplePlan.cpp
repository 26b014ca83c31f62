#include "VornSandbox/SampleHistory/SamplePlan.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vorn {
namespace {

// How many rows in a thousand are of each kind.
constexpr unsigned reactions = 45;
constexpr unsigned happenings = 3;
constexpr unsigned happeningsInGroups = 14;
constexpr unsigned unsent = 4;
constexpr unsigned emptyRows = 3;
constexpr unsigned undatedRows = 2;
constexpr unsigned withAttachment = 40;
constexpr unsigned withLink = 84; // of the rows without attachments: 8 in a hundred of all
constexpr unsigned padded = 9;    // with white space at both ends, as typed
constexpr unsigned editedRows = 12;
constexpr unsigned threads = 50;
constexpr unsigned blobOnly = 600;
constexpr unsigned textOnly = 80;

/// A kind of attached file. `exportedType` is the MIME type that an export gives it.
struct FileKind {
    std::string_view prefix;
    std::string_view suffix;
    std::optional<std::string_view> uti;
    std::optional<std::string_view> mimeType;
    std::string_view exportedType;
};

// `fileKinds` has twenty entries, so that each stands for five in a hundred.
constexpr FileKind jpeg{"IMG_", ".JPG", "public.jpeg", "image/jpeg", "image/jpeg"};
constexpr FileKind heic{"IMG_", ".HEIC", "public.heic", "image/heic", "image/heic"};
constexpr FileKind voice{"Audio Message ", ".caf", "com.apple.coreaudio-format", "", "application/octet-stream"};
constexpr FileKind pdf{"Scan ", ".pdf", "com.adobe.pdf", "application/pdf", "application/pdf"};
constexpr FileKind movie{"IMG_", ".MOV", "com.apple.quicktime-movie", "video/quicktime", "video/quicktime"};
constexpr FileKind screenshot{"Screenshot ", ".png", "public.png", std::nullopt, "image/png"};
constexpr FileKind unknown{"notes ", ".vrnx", "dyn.ah62d4rv4ge81q7k2", std::nullopt, "application/octet-stream"};
constexpr FileKind nameless{"file ", "", std::nullopt, std::nullopt, "application/octet-stream"};
constexpr std::array fileKinds{jpeg, jpeg, jpeg, jpeg,  jpeg,  jpeg,  heic,       heic,       heic,    heic,
                               heic, pdf,  pdf,  voice, voice, movie, screenshot, screenshot, unknown, nameless};

/// A value of `associated_message_type`, and the verb in the reaction's text.
struct Reaction {
    std::int64_t type;
    std::string_view verb;
};
constexpr std::array reactionKinds{Reaction{2000, "Loved"},          Reaction{2001, "Liked"},
                                   Reaction{2002, "Disliked"},       Reaction{2003, "Laughed at"},
                                   Reaction{2004, "Emphasized"},     Reaction{2005, "Questioned"},
                                   Reaction{2006, "Reacted 🫶🏼 to"}};
constexpr std::int64_t takenBack = 1000; // added to the type of a reaction that is taken back

constexpr std::int64_t appleEpoch = 978'307'200; // 2001-01-01T00:00:00Z in Unix time
constexpr std::int64_t second = 1'000'000'000;
constexpr std::string_view placeholder = "\uFFFC";

std::int64_t scalarCount(std::string_view text)
{
    return std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
}

/// At most the first `scalars` characters.
std::string_view beginning(std::string_view text, std::int64_t scalars)
{
    std::size_t end = 0;
    while (end < text.size()) {
        if ((static_cast<unsigned char>(text[end]) & 0xC0U) != 0x80U && scalars-- == 0) break;
        ++end;
    }
    return text.substr(0, end);
}

} // namespace

SamplePlan::SamplePlan(const SampleHistoryOptions& options, const SampleCast& cast)
    : options_(options), cast_(cast), random_(options.seed), text_(random_),
      timeline_(options.seed + 0x5EED, options.messages, options.until - appleEpoch, options.cancel),
      conversations_(cast.chats.size())
{
    summary_.handles = cast.assistant;
    for (const SampleChat& chat : cast.chats) {
        SampleConversation conversation{chat.guid, chat.service, chat.style, {}, chat.withAssistant, 0};
        for (const std::int64_t handle : chat.handles) {
            conversation.handles.push_back(cast.handles[static_cast<std::size_t>(handle - 1)].id);
        }
        summary_.conversations.push_back(std::move(conversation));
    }
}

const SampleMessage& SamplePlan::next()
{
    const std::size_t previousChat = row_.chat;
    const std::int64_t rowID = row_.rowID + 1;
    row_ = SampleMessage{};
    row_.rowID = rowID;
    row_.chat = previousChat;
    shown_.clear();
    link_.clear();

    const auto [date, beginsSession] = timeline_.next();
    chooseChat(beginsSession);
    row_.date = date;
    address();
    const Skip skip = drawSkip();
    fill(skip);
    count(skip);
    if (skip == Skip::none) remember();
    return row_;
}

void SamplePlan::chooseChat(bool beginsSession)
{
    if (!beginsSession) return;
    // The conversation furthest behind its share: even a short history then has some rows of each.
    const auto behind = [&](std::size_t index) {
        return static_cast<double>(summary_.conversations[index].rows) / cast_.chats[index].weight;
    };
    for (std::size_t i = 0; i < cast_.chats.size(); ++i) {
        if (behind(i) < behind(row_.chat)) row_.chat = i;
    }
}

void SamplePlan::address()
{
    random_.uuid(row_.guid);
    row_.fromMe = chat().isGroup() ? random_.chance(300) : random_.chance(850) != conversation().lastFromMe;
    conversation().lastFromMe = row_.fromMe;
    row_.handle = row_.fromMe && chat().isGroup() ? 0 : random_.pick(std::span(chat().handles));
    row_.service = chat().service;
    if (chat().guid.starts_with("any;") && random_.chance(70)) row_.service = random_.chance(500) ? "SMS" : "RCS";
    row_.dateDelivered = row_.fromMe && row_.service != "SMS" ? row_.date + random_.between(1, 900) * second / 100 : 0;
    row_.dateRead = row_.fromMe ? 0 : row_.date + random_.between(1, 600) * second;
    if (!conversation().recent.empty()) row_.replyToGuid = conversation().recent.back().guid;
}

SamplePlan::Skip SamplePlan::drawSkip()
{
    const unsigned ofSystem = chat().isGroup() ? happeningsInGroups : happenings;
    const std::array shares{std::pair{Skip::reaction, reactions}, std::pair{Skip::system, ofSystem},
                            std::pair{Skip::unsent, unsent}, std::pair{Skip::empty, emptyRows},
                            std::pair{Skip::undated, undatedRows}};
    auto drawn = static_cast<unsigned>(random_.below(1000));
    for (const auto& [skip, share] : shares) {
        if (drawn < share) return skip == Skip::reaction && conversation().recent.empty() ? Skip::none : skip;
        drawn -= share;
    }
    return Skip::none;
}

void SamplePlan::fill(Skip skip)
{
    switch (skip) {
    case Skip::reaction: return react();
    case Skip::system: return happen();
    case Skip::unsent: return unsend();
    case Skip::empty: return leaveEmpty();
    case Skip::undated:
        write();
        row_.date = row_.dateRead = row_.dateDelivered = row_.dateEdited = 0;
        return;
    case Skip::none: return random_.chance(withAttachment) ? attach() : write();
    }
}

void SamplePlan::react()
{
    const Earlier& target = earlier();
    const Reaction& reaction = random_.pick(std::span<const Reaction>(reactionKinds));
    const bool isTakenBack = random_.chance(80);
    row_.associatedGuid = "p:0/" + target.guid;
    row_.associatedType = reaction.type + (isTakenBack ? takenBack : 0);
    row_.associatedLength = static_cast<std::int64_t>(utf16Length(target.text));
    if (reaction.type == 2006) row_.associatedEmoji = "🫶🏼";
    row_.text = std::string(isTakenBack ? "Removed a reaction from" : reaction.verb) + " “" + target.text + "”";
    row_.body = attributedBody(*row_.text, drawKind());
}

void SamplePlan::happen()
{
    if (!chat().isGroup()) {
        row_.itemType = random_.between(4, 6); // location shared, voice message kept, call
        return;
    }
    row_.itemType = random_.between(1, 3); // joined or removed, renamed, left
    if (row_.itemType == 1) row_.groupActionType = random_.between(0, 1);
    if (row_.itemType == 1) row_.otherHandle = chat().handles.front();
    if (row_.itemType == 2) row_.groupTitle = chat().displayName.empty() ? "Us" : chat().displayName;
}

void SamplePlan::unsend()
{
    row_.parts = 0;
    if (random_.chance(500)) {
        row_.dateRetracted = row_.date + random_.between(5, 120) * second;
        if (!random_.chance(500)) return;
        text_.compose(SampleVoice::prompt, shown_); // some rows keep the text that was taken back
        row_.body = attributedBody(shown_, drawKind());
        return;
    }
    row_.dateEdited = row_.date + random_.between(5, 120) * second;
    if (random_.chance(500)) row_.body = attributedBody("", drawKind());
}

void SamplePlan::leaveEmpty()
{
    switch (random_.below(4)) {
    case 0: return; // neither text nor body
    case 1: row_.text = " \n"; return;
    case 2: row_.body = attributedBody(placeholder, drawKind()); return; // its attachment is gone
    default: row_.text = ""; row_.body = attributedBody("", drawKind());
    }
}

void SamplePlan::write()
{
    const bool withTheAssistant = cast_.handles[static_cast<std::size_t>(chat().handles.front() - 1)].isAssistant;
    text_.compose(!withTheAssistant ? SampleVoice::chatter
                  : row_.fromMe     ? SampleVoice::prompt
                                    : SampleVoice::reply,
                  shown_);
    if (random_.chance(withLink)) addLink(shown_);
    const bool isPadded = random_.chance(padded);
    store(isPadded ? " " + shown_ + "\n" : shown_);
    if (random_.chance(editedRows)) row_.dateEdited = row_.date + random_.between(10, 880) * second;
    if (random_.chance(threads)) answer();
}

void SamplePlan::attach()
{
    const std::int64_t number = random_.chance(850) ? 1 : random_.between(2, 4);
    std::string stored;
    for (std::int64_t i = 0; i < number; ++i) {
        const FileKind& kind = random_.pick(std::span<const FileKind>(fileKinds));
        SampleAttachment attachment{
            {}, {}, kind.uti, kind.mimeType, kind.exportedType, random_.between(20'000, 6'000'000)};
        random_.uuid(attachment.guid);
        attachment.guid.insert(0, "at_" + std::to_string(i) + "_");
        attachment.transferName =
            std::string(kind.prefix) + std::to_string(random_.between(1'000, 9'999)) + std::string(kind.suffix);
        row_.isAudio = row_.isAudio || kind.suffix == ".caf";
        row_.attachments.push_back(std::move(attachment));
        stored += placeholder;
    }
    row_.parts = number;
    if (random_.chance(300)) {
        text_.compose(SampleVoice::chatter, shown_);
        stored += shown_;
        ++row_.parts;
    }
    store(std::move(stored));
    if (random_.chance(threads)) answer();
}

void SamplePlan::addLink(std::string& shown)
{
    text_.link(link_);
    const unsigned form = static_cast<unsigned>(random_.below(100));
    if (form < 20)
        shown = link_; // nothing else
    else
        shown += (form < 60 ? " " : "\n") + link_;
    if (form >= 95) shown += "\nagain: " + link_;
    row_.hasLink = true;
    if (form < 50) row_.payload.assign(static_cast<std::size_t>(random_.between(650, 1'250)), std::byte{});
}

void SamplePlan::answer()
{
    if (conversation().recent.empty()) return;
    const Earlier& target = earlier();
    row_.threadOriginatorGuid = target.guid;
    row_.threadOriginatorPart = "0:0:" + std::to_string(utf16Length(target.text));
}

void SamplePlan::store(std::string stored)
{
    const auto drawn = random_.below(1000);
    if (drawn < blobOnly || drawn >= blobOnly + textOnly) row_.body = attributedBody(stored, drawKind());
    if (drawn >= blobOnly) row_.text = std::move(stored);
}

const SamplePlan::Earlier& SamplePlan::earlier()
{
    return conversation().recent[random_.below(conversation().recent.size())];
}

void SamplePlan::remember()
{
    auto& recent = conversation().recent;
    recent.push_back({row_.guid, std::string(beginning(shown_, 60))});
    if (recent.size() > 8) recent.pop_front();
}

void SamplePlan::count(Skip skip)
{
    static constexpr std::array<const char*, 6> reasons{"", "reaction", "system", "unsent", "empty", "undated"};
    const bool isInLog = row_.rowID > options_.messages - options_.inLog;
    ++summary_.messages;
    ++summary_.conversations[row_.chat].rows;
    summary_.attachments += static_cast<std::int64_t>(row_.attachments.size());
    summary_.inLog += isInLog ? 1 : 0;
    if (!chat().withAssistant) return;

    SampleExpectation& expected = summary_.expected;
    ++expected.rows;
    if (skip != Skip::none) {
        ++expected.skipped[reasons[static_cast<std::size_t>(skip)]];
        return;
    }
    ++expected.kept;
    ++(row_.fromMe ? expected.prompts : expected.replies);
    expected.edited += row_.dateEdited != 0 ? 1 : 0;
    expected.threaded += row_.threadOriginatorGuid.empty() ? 0 : 1;
    expected.withLinks += row_.hasLink ? 1 : 0;
    expected.links += row_.hasLink ? 1 : 0;
    expected.withAttachments += row_.attachments.empty() ? 0 : 1;
    for (const SampleAttachment& attachment : row_.attachments)
        ++expected.attachmentTypes[std::string(attachment.exportedType)];
    expected.blobOnly += row_.text ? 0 : 1;
    expected.characters += scalarCount(shown_);
    expected.keptInLog += isInLog ? 1 : 0;
    expected.lastAt = row_.date / second + appleEpoch;
    if (!expected.firstAt) expected.firstAt = expected.lastAt;
}

AttributedBodyKind SamplePlan::drawKind()
{
    const auto drawn = random_.below(100);
    return drawn < 60   ? AttributedBodyKind::immutableText
           : drawn < 85 ? AttributedBodyKind::mutableText
                        : AttributedBodyKind::mutableWithFixedText;
}

} // namespace vorn
