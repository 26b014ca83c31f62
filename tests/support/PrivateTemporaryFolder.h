#pragma once

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

namespace vorn::testing {

/// Gives this process a folder for temporary files of its own while it lives. An export that does not hold the lock of
/// `TemporaryItems` needs one: a program that another test starts would sweep its private copy from the common folder.
class PrivateTemporaryFolder {
    TemporaryFolder folder_;
    ScopedEnvironment variable_{"TMPDIR", folder_.path().string()};
};

} // namespace vorn::testing
