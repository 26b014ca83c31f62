#pragma once

#include "Platform/HTTP/AnswerHead.h"
#include "Platform/HTTP/HTTPSession.h"

#include <string>
#include <string_view>

namespace vorn {

/// An answer as it arrives, limited in size.
class IncomingAnswer {
public:
    /// Take what libcurl read; false once the answer is too large.
    bool takeHeader(std::string_view line);
    bool takeBody(std::string_view bytes);

    /// Takes what was left unread on a connection that was cut: the rest of the head, and what arrived of the body.
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
