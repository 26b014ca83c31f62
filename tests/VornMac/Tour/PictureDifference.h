#pragma once

#include <QImage>

namespace vorn::testing {

/// How far two pictures of the same size are apart, as a share of their pixels, 0…1. A pixel counts when a channel of
/// it differs by more than the eye could see on an edge: fonts are drawn a little differently from one version of the
/// rasterizer to the next. Pictures of different sizes are wholly apart.
double pictureDifference(const QImage& one, const QImage& other);

} // namespace vorn::testing
