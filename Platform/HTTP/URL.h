#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// An absolute URL (RFC 3986) as it was written, taken apart once. A value; equal when written the same.
class URL {
public:
    /// Nothing when `text` is no absolute URL with a host: a missing scheme or host, a port that is none (0 too), and
    /// anything in it that must be percent-encoded, as white space, control characters and all beyond ASCII must.
    /// Which schemes are welcome is the caller's business.
    static std::optional<URL> parse(std::string_view text);

    const std::string& text() const noexcept { return text_; }
    const std::string& scheme() const noexcept { return scheme_; } ///< in lower case
    const std::string& host() const noexcept { return host_; }     ///< in lower case; an IPv6 host without its brackets
    const std::string& path() const noexcept { return path_; }     ///< as written; empty when there is none
    bool hasUserInfo() const noexcept { return hasUserInfo_; }

    /// Whether the host is this very machine: "localhost" or "127.0.0.1", and no other spelling of either.
    bool isThisMachine() const noexcept { return host_ == "localhost" || host_ == "127.0.0.1"; }

    /// Whether what is sent there stays private: https, or http to this machine.
    bool isSecureOrLocal() const noexcept;

    /// This URL with `component` after its path and one "/" between them; "/" in `component` separates, any other
    /// character that a path does not allow is percent-encoded, "%" too. The query stays where it was.
    URL appendingPathComponent(std::string_view component) const;

    bool operator==(const URL& other) const noexcept { return text_ == other.text_; }

private:
    URL() = default;

    std::string text_, scheme_, host_, path_;
    bool hasUserInfo_ = false;
    std::size_t pathStart_ = 0; ///< where in the text the path begins
};

} // namespace vorn
