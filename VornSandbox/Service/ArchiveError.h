#pragma once

#include <stdexcept>

namespace vorn::sandbox {

/// An archive that cannot be read as an export, with a sentence that says why.
class ArchiveError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace vorn::sandbox
