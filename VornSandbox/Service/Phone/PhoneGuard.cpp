#include "VornSandbox/Service/Phone/PhoneGuard.h"

#include "VornSandbox/Service/State/ServiceError.h"

namespace vorn::sandbox {
namespace {

bool isThisComputer(std::string_view host)
{
    const std::string_view name = host.substr(0, host.find(':'));
    return name == "127.0.0.1" || name == "localhost";
}

ServiceError foreign(const char* message)
{
    return {403, "foreign_page", message};
}

} // namespace

void guardPhone(const Call& call)
{
    const std::string* host = call.header("host");
    if (host == nullptr || !isThisComputer(*host)) throw foreign("The phone is for this computer only.");
    const std::string* origin = call.header("origin");
    if (origin != nullptr && *origin != "http://" + *host) throw foreign("The phone obeys its own page only.");
    // Browsers ask before they send JSON elsewhere, and nobody here answers yes.
    const std::string* type = call.header("content-type");
    if (call.method != "GET" && (type == nullptr || *type != "application/json")) {
        throw foreign("The phone takes JSON only.");
    }
}

} // namespace vorn::sandbox
