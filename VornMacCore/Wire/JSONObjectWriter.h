#pragma once

#include "VornMacCore/Wire/JSONErrors.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

/// Builds one JSON object with its keys in the order in which they were added; add each key once. Throws
/// `UnencodableJSON` for text that is not well-formed UTF-8 and for a number that is not finite. Threads: one.
class JSONObjectWriter {
public:
    JSONObjectWriter();
    ~JSONObjectWriter();
    JSONObjectWriter(JSONObjectWriter&& other) noexcept;
    JSONObjectWriter& operator=(JSONObjectWriter&& other) noexcept;

    void string(std::string_view key, const std::string& value);
    void integer(std::string_view key, std::int64_t value);
    void number(std::string_view key, double value);
    void strings(std::string_view key, const std::vector<std::string>& values);
    void object(std::string_view key, JSONObjectWriter value);
    void objects(std::string_view key, std::vector<JSONObjectWriter> values);

    /// The object so far, as compact UTF-8.
    std::string text() const;

private:
    struct Object;
    std::unique_ptr<Object> object_;
};

} // namespace vorn
