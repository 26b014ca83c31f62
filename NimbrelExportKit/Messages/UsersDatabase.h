#pragma once

#include <filesystem>
#include <stdexcept>

namespace vorn {

/// The current user has no known home folder.
class NoHomeFolder : public std::runtime_error {
public:
    NoHomeFolder();
};

/// As `FullDiskAccess::messagesDatabaseURL`, but throws `NoHomeFolder` instead of a `filesystem_error`. Threads: any.
std::filesystem::path usersMessagesDatabase();

} // namespace vorn
