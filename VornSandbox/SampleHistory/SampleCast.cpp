#include "VornSandbox/SampleHistory/SampleCast.h"

#include "Platform/Base/Text.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace vorn {
namespace {

// Numbers that are reserved for fiction, an address under a reserved domain, and the sender of a one-time code.
const std::array others{
    SampleHandle{"+12125550101", "iMessage"},
    SampleHandle{"+12125550102", "iMessage"},
    SampleHandle{"+442079460103", "RCS"},
    SampleHandle{"anna.keller@example.com", "iMessage"},
    SampleHandle{"262966", "SMS"},
};

/// Adds a handle and its one-to-one conversation, and returns the handle's ROWID. Newer systems begin a conversation's
/// guid with "any" and let it move between services.
std::int64_t addPerson(SampleCast& cast, const SampleHandle& person, std::string_view guidPrefix, unsigned weight)
{
    cast.handles.push_back(person);
    const auto rowID = static_cast<std::int64_t>(cast.handles.size());
    cast.chats.push_back({.guid = std::string(guidPrefix) + ";-;" + person.id,
                          .identifier = person.id,
                          .service = person.service,
                          .handles = {rowID},
                          .weight = weight,
                          .withAssistant = person.isAssistant});
    return rowID;
}

void addGroup(SampleCast& cast, const std::string& number, const char* name, std::vector<std::int64_t> handles,
              unsigned weight)
{
    cast.chats.push_back({.guid = "iMessage;+;chat" + number,
                          .identifier = "chat" + number,
                          .service = "iMessage",
                          .displayName = name,
                          .style = 43,
                          .handles = std::move(handles),
                          .weight = weight});
}

void check(const std::vector<std::string>& handles)
{
    for (auto it = handles.begin(); it != handles.end(); ++it) {
        if (text::trimmed(*it).empty()) throw std::invalid_argument("a handle is blank");
        if (std::find(handles.begin(), it, *it) != it) throw std::invalid_argument("a handle is given twice: " + *it);
        if (std::ranges::find(others, *it, &SampleHandle::id) != others.end()) {
            throw std::invalid_argument("this handle belongs to somebody else in the history: " + *it);
        }
    }
}

bool isPhoneNumber(const std::string& handle)
{
    return handle.find('@') == std::string::npos && handle.starts_with('+');
}

std::vector<std::string> assistantHandles(const SampleHistoryOptions& options)
{
    if (!options.handles.empty()) return options.handles;
    if (options.onlyAssistant) return {"+14155550137"};
    return {"+14155550137", "nimbrel@example.com"};
}

} // namespace

SampleCast SampleCast::make(const SampleHistoryOptions& options)
{
    SampleCast cast;
    cast.assistant = assistantHandles(options);
    check(cast.assistant);

    for (const std::string& id : cast.assistant) {
        const bool first = cast.chats.empty();
        addPerson(cast, {id, "iMessage", true}, first ? "any" : "iMessage", first ? 36 : 8);
    }
    if (options.onlyAssistant) return cast;

    const auto phone = std::ranges::find_if(cast.assistant, isPhoneNumber);
    if (phone != cast.assistant.end()) addPerson(cast, {*phone, "SMS", true}, "SMS", 6);

    std::vector<std::int64_t> friends;
    for (const SampleHandle& person : others) {
        const bool first = friends.empty();
        friends.push_back(addPerson(cast, person, first ? "any" : person.service, first ? 15 : 5));
    }
    addGroup(cast, "413868532150947261", "Summer trip", {friends[0], friends[1], 1}, 9);
    addGroup(cast, "872253640985122345", "", {friends[0], friends[1], friends[3]}, 7);
    addGroup(cast, "590117324466381902", "Plans", {1}, 3); // all but the assistant have left: it is still a group
    return cast;
}

} // namespace vorn
