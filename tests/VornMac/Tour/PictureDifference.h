#pragma once

#include <QImage>

namespace vorn::testing {

/// The share of pixels, 0…1, in which two pictures of the same size differ; 1 for pictures of different sizes. A pixel
/// counts if one of its channels differs by more than the eye can see on an edge: each version of the rasterizer draws
/// fonts a little differently.
double pictureDifference(const QImage& one, const QImage& other);

} // namespace vorn::testing
