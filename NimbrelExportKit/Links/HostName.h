#pragma once

#include <cstddef>
#include <string_view>

/// Where host names begin and end in running text. Threads: any. All positions are byte offsets.
namespace vorn::links {

struct Host {
    std::size_t begin = 0;
    std::size_t end = 0;    ///< one past its last byte
    std::size_t readTo = 0; ///< how far the text was read; if this host makes no link, none begins before it
    enum class Kind {
        none,       ///< not a host
        singleName, ///< one label: a machine of the local network
        unknown,    ///< several labels, the last one not a top-level domain of the list
        known,      ///< ends with a top-level domain that exists
        address,    ///< IPv4, or IPv6 in square brackets
    } kind = Kind::none;
    std::size_t labels = 0;
    std::string_view topLevel = {}; ///< the last label of a name
};

/// Reads the host that begins at `at`. A name ends where a complete ASCII host is followed by another script:
/// "example.com" in "example.comです". Refuses what a name may not be: labels that are empty, longer than 63 characters
/// or bounded by '-' or '_'; an underscore in the last two labels; numbers at the end that make no IPv4 address.
/// `before` is the character before the whole link, NUL if there is none: underscores there and after the name belong
/// to the text.
Host readHost(std::string_view text, std::size_t at, char before = '\0');

/// The beginning of the label that ends at `end`, not before `floor`. A label is of one script, except that ASCII
/// letters may precede emoji at its end.
std::size_t labelStart(std::string_view text, std::size_t end, std::size_t floor) noexcept;

} // namespace vorn::links
