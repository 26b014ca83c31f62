#pragma once

#include "VornMacCore/Client/VornAPI.h"

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace vorn::testing {

/// One of the client's calls that need a session; drops the answer.
struct AuthenticatedCall {
    std::string name;
    std::function<Async<>(const VornAPI&)> call;
};

inline std::ostream& operator<<(std::ostream& out, const AuthenticatedCall& call)
{
    return out << call.name;
}

/// Each of them, with sample arguments.
const std::vector<AuthenticatedCall>& authenticatedCalls();

} // namespace vorn::testing
