#pragma once

#include "VornSandbox/Service/Archive.h"
#include "VornSandbox/Service/Backend.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

namespace vorn::sandbox {

/// The uploaded archives, opened to be looked at. Threads: any. Errors: `ServiceError`.
class PhoneArchives {
public:
    explicit PhoneArchives(Backend& backend) : backend_(backend) {}

    /// A page of the messages of a submission's archive, with the manifest; pages count from 0.
    nlohmann::json page(const std::string& submissionId, std::int64_t page);

private:
    void requireArchive(const std::string& submissionId) const;
    const MessagePages& open(const std::string& submissionId);

    Backend& backend_;
    std::mutex mutex_;
    std::map<std::string, MessagePages> opened_;
};

} // namespace vorn::sandbox
