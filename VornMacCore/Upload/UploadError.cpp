#include "VornMacCore/Upload/UploadError.h"

#include "Platform/Base/Match.h"

#include <fmt/format.h>

namespace vorn {
namespace {

std::string sentenceOf(const UploadError::Reason& reason)
{
    return std::visit(
        Match{
            [](const UploadError::PartRefused& refused) {
                return fmt::format("Part {} of the upload failed ({}).", refused.part, refused.status);
            },
            [](const UploadError::MissingETag& missing) {
                return fmt::format("Part {} of the upload was not acknowledged.", missing.part);
            },
            [](UploadError::NoAsset) { return std::string("The server opened no upload for the archive."); },
        },
        reason);
}

} // namespace

UploadError::UploadError(Reason reason) : reason_(reason), text_(sentenceOf(reason_))
{
}

} // namespace vorn
