#pragma once

#include "Platform/HTTP/AnswerHead.h"
#include "Platform/HTTP/HTTPSession.h"

#include <string>
#include <string_view>

namespace vorn {

/// An answer as it arrives, held to its largest size.
class IncomingAnswer {
public:
    /// Take what libcurl read; false once the answer is too large.
    bool takeHeader(std::string_view line);
    bool takeBody(std::string_view bytes);

    /// Takes what a connection that was cut has left unread: the rest of a head, and what of the body came with it.
    void takeRest(std::string_view bytes);

    const AnswerHead& head() const noexcept { return head_; }
    bool isTooLarge() const noexcept { return tooLarge_; }

    /// Hands the answer over.
    HTTPResponse release();

private:
    AnswerHead head_;
    std::string body_;
    bool tooLarge_ = false;
};

} // namespace vorn
