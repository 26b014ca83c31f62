#pragma once

#include <optional>
#include <string>

#include <QImage>

namespace vorn::testing {

/// The text that a QR reader, a program of its own, finds in `picture`; empty if it finds none, nothing if there is no
/// such program.
std::optional<std::string> codeIn(const QImage& picture);

} // namespace vorn::testing
