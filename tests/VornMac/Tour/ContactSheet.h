#pragma once

#include <string>
#include <vector>

#include <QImage>

namespace vorn::testing {

/// Pictures in rows of three, side by side, so that a part that should keep its place is seen to. Each is scaled to fit
/// half the size at which the window first opens.
class ContactSheet {
public:
    void add(const QImage& picture)
    {
        frames_.push_back(picture.scaled(cell, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    }

    /// False where the file cannot be written.
    bool save(const std::string& path) const;

private:
    static constexpr QSize cell{590, 380};

    std::vector<QImage> frames_;
};

} // namespace vorn::testing
