#pragma once

#include <cstddef>
#include <string_view>

namespace vorn::links {

/// The link found around a candidate, in byte offsets into the text.
struct LinkSpan {
    std::size_t begin = 0;
    std::size_t end = 0;      ///< equal to `begin` if there is no link
    std::size_t resumeAt = 0; ///< where to look for the next link: after the candidate and any path that was read
    std::size_t hostBegin = 0;
    std::size_t hostEnd = 0;
    bool hasScheme = false;

    bool isLink() const { return end > begin; }
};

/// The link with a scheme whose "://" is at `colon`. Nothing before `floor` belongs to it. Skips the whole address of
/// any scheme but http and https.
LinkSpan schemeLink(std::string_view text, std::size_t colon, std::size_t floor);

/// The link without a scheme whose first dot is at `dot`: an IPv4 address, or a host in an existing top-level domain.
/// Refuses what the text around it shows to be part of an e-mail address, a file name, a version number or program
/// text.
LinkSpan bareLink(std::string_view text, std::size_t dot, std::size_t floor);

/// The link that begins with `localHost` and has its port's ':' at `colon`.
LinkSpan localLink(std::string_view text, std::size_t colon, std::size_t floor);

} // namespace vorn::links
