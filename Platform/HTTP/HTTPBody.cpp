#include "Platform/HTTP/HTTPBody.h"

#include <algorithm>

namespace vorn {

std::size_t BytesBody::read(std::int64_t at, std::span<std::byte> into) const
{
    const ByteView rest = bytes().subspan(static_cast<std::size_t>(at));
    const std::size_t count = std::min(rest.size(), into.size());
    std::copy_n(rest.begin(), count, into.begin());
    return count;
}

} // namespace vorn
