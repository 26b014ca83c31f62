#pragma once

#include <string>
#include <vector>

#include <QImage>

namespace vorn::testing {

/// Pictures beside each other in rows of three, at half their size, as a film: what should stand still can be seen to.
class ContactSheet {
public:
    void add(const QImage& picture)
    {
        frames_.push_back(picture.scaled(picture.size() / 2, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    }

    /// False where the file cannot be written.
    bool save(const std::string& path) const;

private:
    std::vector<QImage> frames_;
};

} // namespace vorn::testing
