#pragma once

#include "VornSandbox/Service/Settings.h"
#include "VornSandbox/Service/StateDatabase.h"

#include <cstdint>
#include <string>

namespace vorn::sandbox {

/// Makes and checks the paths that a part may be put to: "/uploads/ASSET/PART?expires=MILLISECONDS&signature=HEX". Who
/// holds one needs no token until it expires. Threads: hold the state's lock.
class PartSigner {
public:
    PartSigner(const StateDatabase& state, const Settings& settings);

    std::string path(const std::string& assetId, std::int64_t part) const;

    /// Throws `ServiceError` 403 unless this service signed exactly that and it has not expired.
    void check(const std::string& assetId, std::int64_t part, const std::string& expires,
               const std::string& signature) const;

private:
    std::string sign(const std::string& assetId, std::int64_t part, const std::string& expires) const;
    bool isFirst(const std::string& assetId, std::int64_t part) const;

    const StateDatabase& state_;
    const Settings& settings_;
    std::string key_;
};

} // namespace vorn::sandbox
