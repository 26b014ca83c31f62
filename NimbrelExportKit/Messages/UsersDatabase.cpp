#include "NimbrelExportKit/Messages/UsersDatabase.h"

#include "NimbrelExportKit/Messages/FullDiskAccess.h"

namespace vorn {

NoHomeFolder::NoHomeFolder()
    : std::runtime_error("This user has no home folder, so there is no Messages history here. HOME can name one.")
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
