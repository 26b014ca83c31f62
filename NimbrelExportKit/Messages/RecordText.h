#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace vorn {

/// A text of a record: a value of 16 bytes, never changed in place, compared by content.
/// A large export holds millions of short texts. String objects would take twice the memory and fragment it, so the
/// texts of a message list are borrowed from an arena. A copy owns its characters; a text moved out of its list still
/// depends on the arena.
class RecordText {
public:
    RecordText() noexcept = default;
    RecordText(std::string_view text); // NOLINT(google-explicit-constructor): converts like other texts
    RecordText(const std::string& text) : RecordText(std::string_view(text)) {} // NOLINT(google-explicit-constructor)
    RecordText(const char* text) : RecordText(std::string_view(text)) {}        // NOLINT(google-explicit-constructor)

    RecordText(const RecordText& other) : RecordText(other.view()) {}
    RecordText(RecordText&& other) noexcept { swap(other); }
    RecordText& operator=(RecordText other) noexcept
    {
        swap(other);
        return *this;
    }
    ~RecordText()
    {
        if (owns_) delete[] characters_;
    }

    std::string_view view() const noexcept { return {characters_, size_}; }
    operator std::string_view() const noexcept { return view(); } // NOLINT(google-explicit-constructor)
    std::size_t size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }

    bool operator==(const RecordText& other) const noexcept { return view() == other.view(); }
    friend std::ostream& operator<<(std::ostream& out, const RecordText& text) { return out << text.view(); }

private:
    friend class TextArena;

    void swap(RecordText& other) noexcept
    {
        std::swap(characters_, other.characters_);
        std::swap(size_, other.size_);
        std::swap(owns_, other.owns_);
    }

    const char* characters_ = nullptr;
    std::uint32_t size_ = 0; ///< in bytes; SQLite's values are smaller than 2 GiB
    bool owns_ = false;
};

/// Keeps the characters of many texts in a few large blocks. Threads: one at a time.
class TextArena {
public:
    TextArena();
    ~TextArena();
    TextArena(TextArena&&) = delete;

    /// A text that borrows its characters from this arena.
    RecordText keep(std::string_view text);

    /// A text that borrows the characters of `text`, which itself borrows them from this arena.
    static RecordText share(const RecordText& text) noexcept;

private:
    struct Blocks;
    std::unique_ptr<Blocks> blocks_;
};

} // namespace vorn
