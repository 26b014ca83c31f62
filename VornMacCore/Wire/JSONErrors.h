#pragma once

#include <stdexcept>

namespace vorn {

/// JSON without the expected content. `what()` names the place, as in "assets[0].parts[2].url", and what was expected
/// there, never a value, which may be secret.
class UndecodableJSON : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A value that JSON cannot carry. `what()` names its key and the reason; it never shows the value.
class UnencodableJSON : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace vorn
