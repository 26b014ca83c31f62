#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

#include <unistd.h>

namespace vorn::bench {

/// While it lives, this process and its children keep their files in a new folder, separate from the running programs
/// and the files of this machine's user. Construct it before any thread starts.
class EmptyUserFolders {
public:
    EmptyUserFolders() : folder_((std::filesystem::temp_directory_path() / "vorn-bench-XXXXXX").native())
    {
        if (mkdtemp(folder_.data()) == nullptr) throw std::runtime_error("cannot make a folder");
        for (const char* variable : {"XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "TMPDIR"})
            setenv(variable, folder_.c_str(), 1);
    }
    ~EmptyUserFolders()
    {
        std::error_code ignored; // a leftover in the temporary directory does no harm
        std::filesystem::remove_all(folder_, ignored);
    }
    EmptyUserFolders(EmptyUserFolders&&) = delete;

    /// The path of a file in that folder.
    std::string file(const std::string& name) const { return folder_ + "/" + name; }

private:
    std::string folder_;
};

} // namespace vorn::bench
