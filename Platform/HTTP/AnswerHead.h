#pragma once

#include "Platform/HTTP/HTTPHeaders.h"

#include <cstddef>
#include <string_view>

namespace vorn {

/// Puts an answer's head together from its lines. Heads of interim answers (1xx) are forgotten when the next begins;
/// what follows the final head, the trailer of a chunked body, is not taken.
class AnswerHead {
public:
    /// Takes one line with its line break. Gives false once heads have become too large together.
    bool take(std::string_view line);

    /// Whether the head of the final answer has come to its end.
    bool isFinal() const noexcept { return ended_ && status_ >= 200; }
    int status() const noexcept { return status_; }
    HTTPHeaders& headers() noexcept { return headers_; }
    const HTTPHeaders& headers() const noexcept { return headers_; }

private:
    void begin(std::string_view statusLine);
    void add(std::string_view line);

    int status_ = 0;
    bool ended_ = true;
    HTTPHeaders headers_;
    std::size_t bytes_ = 0;
};

} // namespace vorn
