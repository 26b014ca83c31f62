#include "VornSandbox/SampleHistory/BinaryPropertyList.h"

#include "Platform/Base/Text.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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

std::size_t count(const PropertyList& value)
{
    std::size_t sum = 1 + (value.is_object() ? value.size() : 0); // with the keys
    if (value.is_structured()) {
        for (const auto& item : value) sum += count(item);
    }
    return sum;
}

/// Writes each object after those it holds and remembers where it begins. An object's number is its place in that
/// order.
class Writer {
public:
    ByteBuffer write(const PropertyList& root)
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
    /// Writes `value` after everything in it and returns its number.
    std::size_t object(const PropertyList& value)
    {
        if (!value.is_structured()) return scalar(value);
        std::vector<std::size_t> references;
        if (value.is_object()) {
            for (const auto& entry : value.items()) references.push_back(string(entry.key()));
        }
        for (const auto& item : value) references.push_back(object(item));
        begin(value.is_object() ? dictionary : array, value.size());
        for (const std::size_t reference : references) number(reference, referenceBytes_);
        return offsets_.size() - 1;
    }

    std::size_t scalar(const PropertyList& value)
    {
        if (value.is_string()) return string(value.get_ref<const std::string&>());
        if (value.is_binary()) {
            const auto& bytes = value.get_binary();
            begin(data, bytes.size());
            append({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        } else {
            offsets_.push_back(out_.size());
            value.is_boolean() ? number(boolean + (value.get<bool>() ? 1U : 0U), 1) : length(value.get<std::int64_t>());
        }
        return offsets_.size() - 1;
    }

    std::size_t string(std::string_view text)
    {
        if (std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
            begin(ascii, text.size());
            append(text);
            return offsets_.size() - 1;
        }
        std::u16string units;
        for (const char32_t scalar : text::scalars(text)) {
            if (scalar > 0xFFFF) units += static_cast<char16_t>(0xD7C0 + (scalar >> 10));
            units += static_cast<char16_t>(scalar > 0xFFFF ? 0xDC00 + (scalar & 0x3FF) : scalar);
        }
        begin(unicode, units.size());
        for (const char16_t unit : units) number(unit, 2);
        return offsets_.size() - 1;
    }

    void begin(Marker marker, std::size_t count)
    {
        offsets_.push_back(out_.size());
        number(marker | std::min<std::size_t>(count, 15), 1);
        if (count >= 15) length(static_cast<std::int64_t>(count));
    }

    void length(std::int64_t value)
    {
        const unsigned power = value < 0 ? 3 : value < 0x100 ? 0 : value < 0x10000 ? 1 : value < 0x100000000 ? 2 : 3;
        number(integer | power, 1);
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

PropertyList dataOf(ByteView bytes)
{
    const std::string_view text = textOf(bytes);
    return PropertyList::binary({text.begin(), text.end()});
}

ByteBuffer binaryPropertyList(const PropertyList& root)
{
    return Writer().write(root);
}

} // namespace vorn
