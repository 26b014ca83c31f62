#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace vorn::testing {

/// A new folder for one test, removed with it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(TemporaryFolder&&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

    /// The names of its content, sorted.
    std::vector<std::string> names() const;

private:
    std::filesystem::path path_;
};

std::string readFile(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, std::string_view content);

} // namespace vorn::testing
