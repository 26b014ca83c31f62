#include "VornSandbox/SampleHistory/BinaryPropertyList.h"

#include "Platform/Base/Text.h"

#include <algorithm>
#include <string_view>

namespace vorn {
namespace {

enum Marker : std::uint8_t {
    boolean = 0x08,
    integer = 0x10,
    data = 0x40,
    ascii = 0x50,
    unicode = 0x60,
    array = 0xA0,
    dictionary = 0xD0
};

/// Writes each object after those it holds and remembers where it begins. An object's number is its place in that
/// order.
class Writer {
public:
    ByteBuffer write(const PropertyListValue& root)
    {
        referenceBytes_ = count(root) <= 0x100 ? 1 : 2;
        append("bplist00");
        object(root);
        const std::size_t table = out_.size();
        const unsigned offsetBytes = table < 0x100 ? 1 : table < 0x10000 ? 2 : 4;
        for (const std::size_t offset : offsets_) number(offset, offsetBytes);
        number(0, 6);
        number(offsetBytes, 1);
        number(referenceBytes_, 1);
        number(offsets_.size(), 8);
        number(offsets_.size() - 1, 8); // the root comes last
        number(table, 8);
        return std::move(out_);
    }

private:
    static std::size_t count(const PropertyListValue& value)
    {
        std::size_t sum = 1;
        if (const auto* items = std::get_if<PropertyListValue::Array>(&value.content)) {
            for (const auto& item : *items) sum += count(item);
        } else if (const auto* entries = std::get_if<PropertyListValue::Dictionary>(&value.content)) {
            for (const auto& entry : *entries) sum += 1 + count(entry.value);
        }
        return sum;
    }

    /// Writes `value` after everything in it and returns its number.
    std::size_t object(const PropertyListValue& value)
    {
        std::vector<std::size_t> references;
        if (const auto* items = std::get_if<PropertyListValue::Array>(&value.content)) {
            for (const auto& item : *items) references.push_back(object(item));
            begin(array, items->size());
        } else if (const auto* entries = std::get_if<PropertyListValue::Dictionary>(&value.content)) {
            for (const auto& entry : *entries) references.push_back(object({entry.key}));
            for (const auto& entry : *entries) references.push_back(object(entry.value));
            begin(dictionary, entries->size());
        } else {
            scalar(value);
        }
        for (const std::size_t reference : references) number(reference, referenceBytes_);
        return offsets_.size() - 1;
    }

    void scalar(const PropertyListValue& value)
    {
        if (const auto* flag = std::get_if<bool>(&value.content)) {
            offsets_.push_back(out_.size());
            number(boolean + (*flag ? 1U : 0U), 1);
        } else if (const auto* whole = std::get_if<std::int64_t>(&value.content)) {
            offsets_.push_back(out_.size());
            length(integer, *whole);
        } else if (const auto* content = std::get_if<ByteBuffer>(&value.content)) {
            begin(data, content->size());
            append(textOf(*content));
        } else {
            string(std::get<std::string>(value.content));
        }
    }

    void string(std::string_view text)
    {
        if (std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
            begin(ascii, text.size());
            return append(text);
        }
        std::u16string units;
        for (const char32_t scalar : text::scalars(text)) {
            if (scalar > 0xFFFF) units += static_cast<char16_t>(0xD7C0 + (scalar >> 10));
            units += static_cast<char16_t>(scalar > 0xFFFF ? 0xDC00 + (scalar & 0x3FF) : scalar);
        }
        begin(unicode, units.size());
        for (const char16_t unit : units) number(unit, 2);
    }

    void begin(Marker marker, std::size_t count)
    {
        offsets_.push_back(out_.size());
        number(marker | std::min<std::size_t>(count, 15), 1);
        if (count >= 15) length(integer, static_cast<std::int64_t>(count));
    }

    void length(Marker marker, std::int64_t value)
    {
        const unsigned power = value < 0 ? 3 : value < 0x100 ? 0 : value < 0x10000 ? 1 : value < 0x100000000 ? 2 : 3;
        number(marker | power, 1);
        number(static_cast<std::uint64_t>(value), 1U << power);
    }

    void number(std::uint64_t value, unsigned bytes)
    {
        while (bytes-- > 0) out_.push_back(static_cast<std::byte>(bytes < 8 ? value >> (8 * bytes) : 0));
    }

    void append(std::string_view text)
    {
        const ByteView view = bytesOf(text);
        out_.insert(out_.end(), view.begin(), view.end());
    }

    ByteBuffer out_;
    std::vector<std::size_t> offsets_;
    unsigned referenceBytes_ = 2;
};

} // namespace

ByteBuffer binaryPropertyList(const PropertyListValue& root)
{
    return Writer().write(root);
}

} // namespace vorn
