#include "VornMacCore/Upload/UploadError.h"

#include <fmt/format.h>

namespace vorn {
namespace {

/// Every sentence of `UploadError`; a case without one does not compile.
struct Sentence {
    std::string operator()(const UploadError::PartRefused& refused) const
    {
        return fmt::format("Part {} of the upload failed ({}).", refused.part, refused.status);
    }
    std::string operator()(const UploadError::MissingETag& missing) const
    {
        return fmt::format("Part {} of the upload was not acknowledged.", missing.part);
    }
    std::string operator()(UploadError::NoAsset) const { return "The server opened no upload for the archive."; }
};

} // namespace

UploadError::UploadError(Reason reason) : reason_(reason), text_(std::visit(Sentence(), reason_))
{
}

} // namespace vorn
