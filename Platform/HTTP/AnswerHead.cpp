#include "Platform/HTTP/AnswerHead.h"

#include <charconv>

namespace vorn {
namespace {

constexpr std::size_t largest = 256 * 1024; // below libcurl's own limit, whose error reads as a lost connection

std::string_view withoutWhiteSpace(std::string_view text)
{
    constexpr std::string_view white = " \t\r\n";
    const auto first = text.find_first_not_of(white);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(white) - first + 1);
}

} // namespace

bool AnswerHead::take(std::string_view line)
{
    bytes_ += line.size();
    if (bytes_ > largest) return false;
    if (isFinal()) return true;
    if (ended_) {
        begin(line);
    } else if (withoutWhiteSpace(line).empty()) {
        ended_ = true;
    } else {
        add(line);
    }
    return true;
}

void AnswerHead::begin(std::string_view statusLine)
{
    // "HTTP/1.1 200 OK"; libcurl has checked it.
    status_ = 0;
    const auto space = statusLine.find(' ');
    if (space != std::string_view::npos) {
        const std::string_view rest = statusLine.substr(space + 1);
        std::from_chars(rest.data(), rest.data() + rest.size(), status_);
    }
    headers_.clear();
    ended_ = false;
}

void AnswerHead::add(std::string_view line)
{
    const bool continues = line.front() == ' ' || line.front() == '\t'; // a folded line, from old servers
    if (continues && !headers_.empty()) {
        headers_.back().second.append(" ").append(withoutWhiteSpace(line));
        return;
    }
    const auto colon = line.find(':');
    if (colon == std::string_view::npos) return;
    headers_.emplace_back(withoutWhiteSpace(line.substr(0, colon)), withoutWhiteSpace(line.substr(colon + 1)));
}

} // namespace vorn
