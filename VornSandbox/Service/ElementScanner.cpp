#include "VornSandbox/Service/ElementScanner.h"

#include "VornSandbox/Service/ArchiveError.h"

#include <cstddef>

namespace vorn::sandbox {
namespace {

/// A message with all its links is far smaller.
constexpr std::size_t largestElement = 64 * std::size_t{1024} * 1024;

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

} // namespace

void ElementScanner::take(std::string_view piece)
{
    for (const char c : piece) takeOne(c);
}

void ElementScanner::takeOne(char c)
{
    if (place_ == Place::inArray) {
        takeInside(c);
    } else if (place_ == Place::beforeArray && c == '[') {
        place_ = Place::inArray;
    } else if (!isSpace(c)) {
        throw ArchiveError("The messages are no JSON array.");
    }
}

void ElementScanner::takeInside(char c)
{
    const bool between = depth_ == 0 && !inString_;
    if (between && c == ']') {
        if (afterComma_ && element_.empty()) throw ArchiveError("A message is missing after a comma.");
        if (!element_.empty()) close();
        place_ = Place::afterArray;
        return;
    }
    if (between && c == ',') {
        close();
        afterComma_ = true;
        return;
    }
    if (element_.empty() && isSpace(c)) return;
    element_ += c;
    if (element_.size() > largestElement) throw ArchiveError("A message is too large.");
    if (inString_) {
        if (!escaped_ && c == '"') inString_ = false;
        escaped_ = !escaped_ && c == '\\';
    } else if (c == '"') {
        inString_ = true;
    } else if (c == '{' || c == '[') {
        if (++depth_ > deepestElement) throw ArchiveError("A message is nested too deeply.");
    } else if (c == '}' || c == ']') {
        if (depth_ == 0) throw ArchiveError("A message's brackets do not pair.");
        --depth_;
    }
}

void ElementScanner::close()
{
    if (element_.empty()) throw ArchiveError("A message is missing between commas.");
    onElement_(element_);
    element_.clear();
    afterComma_ = false;
}

void ElementScanner::finish() const
{
    if (place_ != Place::afterArray) throw ArchiveError("The messages break off.");
}

} // namespace vorn::sandbox
