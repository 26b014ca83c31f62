#pragma once

#include "Platform/HTTP/HTTPHeaders.h"

#include <cstddef>
#include <string_view>

namespace vorn {

/// Collects the head of an answer, line by line. Drops the heads of interim answers (1xx), and the trailer of a chunked
/// body.
class AnswerHead {
public:
    /// Takes one line with its line break. Returns false once all heads together exceed 256 KiB.
    bool take(std::string_view line);

    /// Whether the head of the final answer is complete.
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
