#pragma once

#include <filesystem>
#include <stdexcept>

namespace vorn {

/// The current user has no known home folder.
class NoHomeFolder : public std::runtime_error {
public:
    NoHomeFolder();
};

/// As `FullDiskAccess::messagesDatabaseURL`, with an error for the user. Throws `NoHomeFolder`. Threads: any.
std::filesystem::path usersMessagesDatabase();

} // namespace vorn
