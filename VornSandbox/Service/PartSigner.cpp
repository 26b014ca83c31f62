#include "VornSandbox/Service/PartSigner.h"

#include "VornSandbox/Service/Secrets.h"
#include "VornSandbox/Service/ServiceError.h"

#include <fmt/format.h>

#include <charconv>

namespace vorn::sandbox {

PartSigner::PartSigner(const StateDatabase& state, const Settings& settings)
    : state_(state), settings_(settings), key_(state.secret("part URLs"))
{
}

std::string PartSigner::path(const std::string& assetId, std::int64_t part) const
{
    const bool stale = settings_.expiredFirstUrls && isFirst(assetId, part);
    const Instant expiresAt = stale ? state_.now() : state_.now() + settings_.urlLifetime;
    const std::string expires = std::to_string(toMilliseconds(expiresAt));
    return fmt::format("/uploads/{}/{}?expires={}&signature={}", assetId, part, expires, sign(assetId, part, expires));
}

void PartSigner::check(const std::string& assetId, std::int64_t part, const std::string& expires,
                       const std::string& signature) const
{
    if (!equalInConstantTime(sign(assetId, part, expires), signature)) {
        throw ServiceError(403, "bad_signature", "The upload URL's signature does not fit.");
    }
    std::int64_t until = 0; // signed by us, so it is a number
    std::from_chars(expires.data(), expires.data() + expires.size(), until);
    if (toMilliseconds(state_.now()) >= until) throw ServiceError(403, "expired_url", "The upload URL has expired.");
}

std::string PartSigner::sign(const std::string& assetId, std::int64_t part, const std::string& expires) const
{
    return hmacSHA256(key_, fmt::format("PUT\n{}\n{}\n{}", assetId, part, expires));
}

bool PartSigner::isFirst(const std::string& assetId, std::int64_t part) const
{
    if (state_.number("SELECT count(*) FROM issuedURL WHERE assetId = ? AND number = ?", {assetId, part}) != 0)
        return false;
    state_.run("INSERT INTO issuedURL VALUES (?, ?)", {assetId, part});
    return true;
}

} // namespace vorn::sandbox
