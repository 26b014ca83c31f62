#include "VornMac/Application/RuntimeFolder.h"

#include "Platform/Base/FileManager.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;

bool isPrivate(const fs::path& folder)
{
    struct stat facts{};
    return lstat(folder.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) && facts.st_uid == geteuid() &&
           (facts.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

} // namespace

fs::path runtimeFolder()
{
    const char* variable = std::getenv("XDG_RUNTIME_DIR");
    fs::path given = variable == nullptr ? "" : variable;
    if (given.is_absolute() && isPrivate(given)) return given;
    const fs::path own = FileManager::standard().temporaryDirectory() / ("vorn-" + std::to_string(geteuid()));
    if (mkdir(own.c_str(), S_IRWXU) != 0 && errno != EEXIST)
        throw std::system_error(errno, std::generic_category(), "cannot make the runtime folder");
    if (!isPrivate(own)) throw std::system_error(EPERM, std::generic_category(), "the runtime folder is not private");
    return own;
}

} // namespace vorn
