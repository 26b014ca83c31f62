#include "Platform/HTTP/IncomingAnswer.h"

#include <utility>

namespace vorn {

bool IncomingAnswer::takeHeader(std::string_view line)
{
    if (!head_.take(line)) tooLarge_ = true;
    return !tooLarge_;
}

bool IncomingAnswer::takeBody(std::string_view bytes)
{
    if (body_.size() + bytes.size() > HTTPSession::largestAnswer) tooLarge_ = true;
    if (!tooLarge_) body_.append(bytes);
    return !tooLarge_;
}

void IncomingAnswer::takeRest(std::string_view bytes)
{
    while (!head_.isFinal()) {
        const auto end = bytes.find('\n');
        if (end == std::string_view::npos || !head_.take(bytes.substr(0, end + 1))) return;
        bytes.remove_prefix(end + 1);
    }
    const bool isPlain = findHeader(head_.headers(), "Transfer-Encoding") == nullptr;
    if (isPlain) body_ = bytes;
}

HTTPResponse IncomingAnswer::release()
{
    return {.status = head_.status(), .headers = std::move(head_.headers()), .body = std::move(body_)};
}

} // namespace vorn
