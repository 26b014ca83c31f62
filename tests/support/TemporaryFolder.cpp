#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <stdlib.h>
#include <unistd.h> // mkdtemp, on macOS

namespace vorn::testing {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
{
    std::string name = (fs::temp_directory_path() / "vorn-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make a folder for the test");
    path_ = name;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored; // a folder left in the temporary directory fails no test
    fs::remove_all(path_, ignored);
}

std::vector<std::string> TemporaryFolder::names() const
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string readFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const fs::path& path, std::string_view content)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

} // namespace vorn::testing
