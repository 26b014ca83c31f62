#pragma once

#include "Platform/Base/Bytes.h"
#include "Platform/Base/Fatal.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

/// Writes JSON (RFC 8259) in two passes of the same code: the first counts bytes, the second writes them into memory of
/// exactly that size, without bounds checks.
namespace vorn::json {

/// How many bytes at the start of `text` need no escape in a JSON string.
std::size_t plainPrefix(std::string_view text) noexcept;

/// The escape sequence for `byte`, which must need one.
std::string_view escape(char byte) noexcept;

/// Counts bytes.
class SizeSink {
public:
    void append(std::string_view text) noexcept { size_ += text.size(); }
    std::size_t size() const noexcept { return size_; }

private:
    std::size_t size_ = 0;
};

/// Appends bytes to memory that is large enough.
class ByteSink {
public:
    explicit ByteSink(std::byte* to) noexcept : at_(to) {}
    void append(std::string_view text) noexcept
    {
        if (text.empty()) return; // its pointer may be null, which memcpy forbids
        std::memcpy(at_, text.data(), text.size());
        at_ += text.size();
    }
    const std::byte* end() const noexcept { return at_; }

private:
    std::byte* at_;
};

/// Writes the values of a document. Texts must be well-formed UTF-8; only what JSON requires is escaped, "/" is not.
template <class Sink>
class Writer {
public:
    explicit Writer(Sink& sink) noexcept : sink_(sink) {}

    /// Punctuation and keys, written verbatim.
    template <std::size_t size>
    void raw(const char (&literal)[size])
    {
        sink_.append({literal, size - 1});
    }

    void text(std::string_view text)
    {
        raw("\"");
        for (std::size_t plain = plainPrefix(text);; plain = plainPrefix(text)) {
            sink_.append(text.substr(0, plain));
            if (plain == text.size()) break;
            sink_.append(escape(text[plain]));
            text.remove_prefix(plain + 1);
        }
        raw("\"");
    }

    template <class Text>
    void textOrNull(const std::optional<Text>& value)
    {
        value ? text(*value) : raw("null");
    }

    void integer(std::int64_t value)
    {
        char digits[20]; // the longest: -9223372036854775808
        const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        sink_.append({digits, static_cast<std::size_t>(end - digits)});
    }

    void boolean(bool value) { value ? raw("true") : raw("false"); }

    /// `values` with commas between them, each written by `write`.
    template <class Values, class Write>
    void list(const Values& values, Write write)
    {
        bool first = true;
        for (const auto& value : values) {
            if (!first) raw(",");
            first = false;
            write(value);
        }
    }

private:
    Sink& sink_;
};

/// The document that `write(writer)` makes. `write` is called twice and must write the same both times.
template <class Write>
ByteBuffer document(const Write& write)
{
    SizeSink size;
    Writer counting(size);
    write(counting);

    ByteBuffer bytes(size.size());
    ByteSink sink(bytes.data());
    Writer writing(sink);
    write(writing);
    if (sink.end() != bytes.data() + bytes.size()) fatalError("a JSON document is not as long as it was measured");
    return bytes;
}

} // namespace vorn::json
