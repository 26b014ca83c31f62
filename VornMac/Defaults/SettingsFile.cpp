#include "VornMac/Defaults/SettingsStore.h"

#include "Platform/Base/FileDescriptor.h"

#include <system_error>

#include <sys/stat.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;

/// QSettings makes a file that others may read, but keeps the rights of one that is there. Where this fails, so does
/// its own attempt, which it reports.
void makePrivate(const fs::path& file)
{
    std::error_code ignored;
    fs::create_directories(file.parent_path().parent_path(), ignored);
    mkdir(file.parent_path().c_str(), S_IRWXU);
    const FileDescriptor created = createPrivateFile(file);
}

} // namespace

std::unique_ptr<QSettings> openSettingsFile(const fs::path& file)
{
    makePrivate(file);
    return std::make_unique<QSettings>(QString::fromStdString(file.native()), QSettings::IniFormat);
}

} // namespace vorn
