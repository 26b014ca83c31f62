#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// An absolute URL (RFC 3986), kept as written. Equal to another when written the same.
class URL {
public:
    /// Nothing unless `text` is an absolute URL with a host: refuses a missing scheme or host, an invalid port (0 too),
    /// and any character that must be percent-encoded, such as white space or non-ASCII. Accepts any scheme.
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

    /// This URL with "/" and `component` appended to its path. Characters that a path does not allow are
    /// percent-encoded, "%" too; "/" is kept. The query stays.
    URL appendingPathComponent(std::string_view component) const;

    bool operator==(const URL& other) const noexcept { return text_ == other.text_; }

private:
    URL() = default;

    std::string text_, scheme_, host_, path_;
    bool hasUserInfo_ = false;
    std::size_t pathStart_ = 0; ///< where in the text the path begins
};

} // namespace vorn
