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
        singleName, ///< one label: a machine on the local network
        unknown,    ///< several labels, the last one not a listed top-level domain
        known,      ///< ends with a top-level domain that exists
        address,    ///< IPv4, or IPv6 in square brackets
    } kind = Kind::none;
    std::size_t labels = 0;
    std::string_view topLevel = {}; ///< the last label of a name
};

/// Reads the host that begins at `at`. A name ends where a complete ASCII host is followed by another script:
/// "example.com" in "example.comです". Refuses a name with a label that is empty, is longer than 63 characters, or
/// begins or ends with '-' or '_'; with an underscore in the last two labels; or with a number at the end, unless it is
/// an IPv4 address. `before` is the character before the whole link, NUL if there is none: after an underscore there,
/// underscores at the end of the name belong to the text as well.
Host readHost(std::string_view text, std::size_t at, char before = '\0');

/// The beginning of the label that ends at `end`, not before `floor`. A label has letters of one script, except that
/// ASCII letters may precede emoji at its end.
std::size_t labelStart(std::string_view text, std::size_t end, std::size_t floor) noexcept;

} // namespace vorn::links
