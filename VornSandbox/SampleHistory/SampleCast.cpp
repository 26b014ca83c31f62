#include "VornSandbox/SampleHistory/SampleCast.h"

#include "Platform/Base/Text.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

namespace vorn {
namespace {

struct Person {
    std::string_view id;
    std::string_view service;
};

// Numbers that are reserved for fiction, an address under a reserved domain, and the sender of a one-time code.
constexpr std::array others{
    Person{"+12125550101", "iMessage"},
    Person{"+12125550102", "iMessage"},
    Person{"+442079460103", "RCS"},
    Person{"anna.keller@example.com", "iMessage"},
    Person{"262966", "SMS"},
};

class CastBuilder {
public:
    explicit CastBuilder(SampleCast& cast) : cast_(cast) {}

    std::int64_t handle(std::string_view id, std::string_view service, bool isAssistant)
    {
        cast_.handles.push_back({std::string(id), std::string(service), isAssistant});
        return static_cast<std::int64_t>(cast_.handles.size());
    }

    /// A one-to-one conversation. Newer systems begin its guid with "any" and let it move between services.
    void oneToOne(std::int64_t handle, std::string_view guidPrefix, unsigned weight)
    {
        const SampleHandle& with = cast_.handles[static_cast<std::size_t>(handle - 1)];
        cast_.chats.push_back({std::string(guidPrefix) + ";-;" + with.id,
                               with.id,
                               with.service,
                               "",
                               45,
                               {handle},
                               weight,
                               with.isAssistant});
    }

    void group(std::string_view number, std::string_view displayName, std::vector<std::int64_t> handles,
               unsigned weight)
    {
        const std::string identifier = "chat" + std::string(number);
        cast_.chats.push_back({"iMessage;+;" + identifier, identifier, "iMessage", std::string(displayName), 43,
                               std::move(handles), weight, false});
    }

private:
    SampleCast& cast_;
};

void check(const std::vector<std::string>& handles)
{
    for (auto it = handles.begin(); it != handles.end(); ++it) {
        if (text::trimmed(*it).empty()) throw std::invalid_argument("a handle is blank");
        if (std::find(handles.begin(), it, *it) != it) throw std::invalid_argument("a handle is given twice: " + *it);
        if (std::ranges::find(others, *it, &Person::id) != others.end()) {
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

    CastBuilder builder(cast);
    for (const std::string& id : cast.assistant) {
        const bool first = cast.chats.empty();
        builder.oneToOne(builder.handle(id, "iMessage", true), first ? "any" : "iMessage", first ? 36 : 8);
    }
    if (options.onlyAssistant) return cast;

    const auto phone = std::ranges::find_if(cast.assistant, isPhoneNumber);
    if (phone != cast.assistant.end()) builder.oneToOne(builder.handle(*phone, "SMS", true), "SMS", 6);

    std::array<std::int64_t, others.size()> friends{};
    for (std::size_t i = 0; i < others.size(); ++i) {
        friends[i] = builder.handle(others[i].id, others[i].service, false);
        builder.oneToOne(friends[i], i == 0 ? "any" : others[i].service, i == 0 ? 15 : 5);
    }
    builder.group("413868532150947261", "Summer trip", {friends[0], friends[1], 1}, 9);
    builder.group("872253640985122345", "", {friends[0], friends[1], friends[3]}, 7);
    builder.group("590117324466381902", "Plans", {1}, 3); // everybody but the assistant has left: a group all the same
    return cast;
}

} // namespace vorn
