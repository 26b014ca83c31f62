#include "VornSandbox/Service/RequestGuard.h"

#include "VornSandbox/Service/ServiceError.h"

#include <string>
#include <string_view>

namespace vorn::sandbox {
namespace {

ServiceError foreign(const char* message)
{
    return {403, "foreign_page", message};
}

bool is(const std::string* value, std::string_view text)
{
    return value != nullptr && *value == text;
}

/// Browsers leave out the port that http has by itself.
bool namesThisService(std::string_view host, int port)
{
    const std::string suffix = ":" + std::to_string(port);
    if (host.ends_with(suffix)) {
        host.remove_suffix(suffix.size());
    } else if (port != 80) {
        return false;
    }
    return host == "127.0.0.1" || host == "localhost";
}

bool isForPrograms(const Call& call)
{
    return call.path.starts_with("/api/") || call.path.starts_with("/uploads/");
}

void guardPage(const Call& call, const std::string& host)
{
    const std::string* origin = call.header("origin");
    if (origin != nullptr && *origin != "http://" + host) throw foreign("The phone obeys its own page only.");
    // Browsers ask before they send JSON elsewhere, and nobody here answers yes.
    if (call.method != "GET" && !is(call.header("content-type"), "application/json")) {
        throw foreign("The phone takes JSON only.");
    }
}

} // namespace

void guardRequest(const Call& call)
{
    const std::string* host = call.header("host");
    if (host == nullptr || !namesThisService(*host, call.servicePort)) {
        throw foreign("The service answers to 127.0.0.1 and localhost, with its port, and no other name.");
    }
    const std::string* site = call.header("sec-fetch-site");
    if (is(site, "cross-site") || is(site, "same-site")) throw foreign("The service answers no other page.");
    if (!isForPrograms(call)) return guardPage(call, *host);
    if (call.header("origin") != nullptr) throw foreign("No page may call the API.");
}

} // namespace vorn::sandbox
