#pragma once

#include <filesystem>
#include <stdexcept>

namespace vorn {

/// Nobody says where the current user's home is.
class NoHomeFolder : public std::runtime_error {
public:
    NoHomeFolder();
};

/// As `FullDiskAccess::messagesDatabaseURL`, for a program that can tell its user why there is none. Throws
/// `NoHomeFolder`. Threads: any.
std::filesystem::path usersMessagesDatabase();

} // namespace vorn
