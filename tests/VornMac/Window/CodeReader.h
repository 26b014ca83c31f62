#pragma once

#include <optional>
#include <string>

#include <QImage>

namespace vorn::testing {

/// What a reader of QR codes, a program of its own, finds in `picture`; empty if it finds nothing, nothing if there is
/// no such program here.
std::optional<std::string> codeIn(const QImage& picture);

} // namespace vorn::testing
