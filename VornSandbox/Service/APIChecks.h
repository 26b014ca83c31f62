#pragma once

#include "VornSandbox/Service/Call.h"

#include <string>
#include <vector>

/// What every request to the API must look like. Threads: any. Errors: `ServiceError`.
namespace vorn::sandbox {

enum class BodyRule { none, json };

/// Checks "Accept", "Content-Type" and whether there is a body at all.
void checkFrame(const Call& call, BodyRule rule);

/// The token of "Authorization: Bearer TOKEN"; 401 when there is none.
std::string bearerToken(const Call& call);

/// Refuses a token where none is asked for: it would be told to whoever reads that request.
void refuseToken(const Call& call);

/// Names of headers that the client has no reason to send.
std::vector<std::string> unexpectedHeaders(const Call& call);

} // namespace vorn::sandbox
