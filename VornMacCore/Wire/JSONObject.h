#pragma once

#include "VornMacCore/Wire/JSONErrors.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

/// One object of a JSON document (RFC 8259), read by key through accessors that convert nothing: each throws
/// `UndecodableJSON` when the key is missing or its value is null or of another type. Unread keys are ignored.
/// Threads: any; the document is shared, never changes, and lives as long as any object of it.
class JSONObject {
public:
    /// The limit for a document, in bytes. The largest valid one carries the URLs of all parts of an upload: an archive
    /// of at most 4 GiB has 512 parts, and servers take URLs of at most 8 KiB.
    static constexpr std::size_t maxTextSize = std::size_t{4} * 1024 * 1024;
    /// The limit for all values of a document (objects, arrays, strings, numbers and others), which take about a
    /// hundred bytes each, however short they are. That largest document has fewer than 2,000.
    static constexpr int maxValues = 50'000;
    static constexpr int maxDepth = 64; ///< nested objects and arrays

    /// Reads a whole document that is an object. Throws `UndecodableJSON` for anything else and for what two readers
    /// could understand differently: ill-formed UTF-8, an escaped half of a surrogate pair, a key that occurs twice in
    /// one object, a number beyond a double's range, more text after the object. Text beyond the limits is refused
    /// before memory is spent on it. One byte order mark at the start is skipped, as the standard allows.
    static JSONObject parse(std::string_view text);

    /// Whether `key` is present and not null.
    bool has(std::string_view key) const;

    std::string string(std::string_view key) const;

    /// A number written without a fraction or exponent that fits a signed 64-bit integer.
    std::int64_t integer(std::string_view key) const;

    /// Any number, as the nearest double.
    double number(std::string_view key) const;

    /// An array that holds only strings.
    std::vector<std::string> strings(std::string_view key) const;

    JSONObject object(std::string_view key) const;

    /// Calls back with each object of an array that holds only objects, in order.
    void forEachObject(std::string_view key, const std::function<void(const JSONObject&)>& onObject) const;

    /// The place of `key` in the document, for error messages: "assets[0].parts".
    std::string pathOf(std::string_view key) const;

private:
    JSONObject(std::shared_ptr<const void> tree, std::string path);

    std::shared_ptr<const void> tree_; ///< the parser's tree of this object; keeps the whole document alive
    std::string path_;                 ///< "" for the document itself
};

} // namespace vorn
