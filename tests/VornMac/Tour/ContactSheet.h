#pragma once

#include <string>
#include <vector>

#include <QImage>

namespace vorn::testing {

/// Pictures in rows of three, like a film: whatever should stand still can be seen to. Half the size of a window as it
/// first opens, or as large as fits there.
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
