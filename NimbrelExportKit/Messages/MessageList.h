#pragma once

#include "NimbrelExportKit/Messages/ExportedMessage.h"
#include "NimbrelExportKit/Messages/RecordText.h"
#include "Platform/Base/Memory.h"

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

namespace vorn {

/// Up to millions of messages, with an arena for their texts. A value; cheap to move, a copy owns its texts. Copy
/// messages out, never move them: their texts may lie in the list's arena.
class MessageList {
public:
    using Messages = std::vector<ExportedMessage, memory::LargeBlockAllocator<ExportedMessage>>;
    using value_type = ExportedMessage;              // NOLINT(readability-identifier-naming): the standard's names
    using const_iterator = Messages::const_iterator; // NOLINT(readability-identifier-naming)
    using iterator = Messages::iterator;             // NOLINT(readability-identifier-naming)

    MessageList() = default;
    explicit MessageList(std::size_t count) : messages_(count) {}
    MessageList(std::initializer_list<ExportedMessage> messages) : messages_(messages) {}
    MessageList(const MessageList& other) : messages_(other.messages_) {}
    MessageList(MessageList&&) noexcept = default;
    MessageList& operator=(MessageList other) noexcept
    {
        messages_.swap(other.messages_);
        arena_.swap(other.arena_);
        return *this;
    }
    ~MessageList() = default;

    /// Appends an empty message.
    ExportedMessage& add() { return messages_.emplace_back(); }
    void push_back(ExportedMessage message) // NOLINT(readability-identifier-naming)
    {
        messages_.push_back(std::move(message));
    }
    void reserve(std::size_t count) { messages_.reserve(count); }

    /// The arena for the texts of this list's messages.
    TextArena& arena()
    {
        if (!arena_) arena_ = std::make_unique<TextArena>();
        return *arena_;
    }

    std::size_t size() const noexcept { return messages_.size(); }
    bool empty() const noexcept { return messages_.empty(); }
    ExportedMessage& operator[](std::size_t index) { return messages_[index]; }
    const ExportedMessage& operator[](std::size_t index) const { return messages_[index]; }
    const ExportedMessage& front() const { return messages_.front(); }
    const ExportedMessage& back() const { return messages_.back(); }
    ExportedMessage& back() { return messages_.back(); }
    iterator begin() noexcept { return messages_.begin(); }
    iterator end() noexcept { return messages_.end(); }
    const_iterator begin() const noexcept { return messages_.begin(); }
    const_iterator end() const noexcept { return messages_.end(); }

    bool operator==(const MessageList& other) const { return messages_ == other.messages_; }

private:
    std::unique_ptr<TextArena> arena_; ///< null until first used; destroyed after the messages
    Messages messages_;
};

} // namespace vorn
