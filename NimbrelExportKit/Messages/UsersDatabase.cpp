#include "NimbrelExportKit/Messages/UsersDatabase.h"

#include "NimbrelExportKit/Messages/FullDiskAccess.h"

namespace vorn {

NoHomeFolder::NoHomeFolder() : std::runtime_error("no home folder")
{
}

std::filesystem::path usersMessagesDatabase()
{
    try {
        return FullDiskAccess::messagesDatabaseURL();
    } catch (const std::filesystem::filesystem_error&) {
        throw NoHomeFolder();
    }
}

} // namespace vorn
