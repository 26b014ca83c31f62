#include "VornMacCore/Client/UploadError.h"

#include "Platform/Base/Match.h"

#include <fmt/format.h>

namespace vorn {
namespace {

std::string describe(const UploadError::Reason& reason)
{
    const Match description{
        [](const UploadError::PartRefused& refused) {
            return fmt::format("part {} refused with {}", refused.part, refused.status);
        },
        [](const UploadError::MissingETag& missing) { return fmt::format("part {} without an ETag", missing.part); },
        [](UploadError::NoAsset) -> std::string { return "submission without an asset"; },
    };
    return std::visit(description, reason);
}

} // namespace

UploadError::UploadError(Reason reason) : reason_(reason), description_(describe(reason_))
{
}

} // namespace vorn
