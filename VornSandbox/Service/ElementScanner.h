#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace vorn::sandbox {

/// Cuts a JSON array that arrives in pieces into its elements, without holding more than one of them. It looks at
/// brackets and strings only: whether an element is sound, its receiver finds out by reading it.
/// Errors: `ArchiveError` when the text is no array or does not end as one, and when an element is larger or nested
/// deeper than any message.
class ElementScanner {
public:
    using OnElement = std::function<void(std::string_view text)>;

    explicit ElementScanner(OnElement onElement) : onElement_(std::move(onElement)) {}

    void take(std::string_view piece);
    void finish() const; ///< call it after the last piece

    /// Brackets within brackets of one element. A message has three.
    static constexpr int deepestElement = 64;

private:
    enum class Place { beforeArray, inArray, afterArray };

    void takeOne(char c);
    void takeInside(char c);
    void close();

    OnElement onElement_;
    Place place_ = Place::beforeArray;
    std::string element_;
    int depth_ = 0;           ///< of brackets within the element
    bool afterComma_ = false; ///< so an element must come
    bool inString_ = false;
    bool escaped_ = false;
};

} // namespace vorn::sandbox
