#include "NimbrelExportKit/Messages/NimbrelExportError.h"

#include "Platform/Base/Match.h"

namespace vorn {
namespace {

std::string describe(const NimbrelExportError::Reason& reason)
{
    return std::visit(
        Match{
            [](const NimbrelExportError::Database& failure) -> std::string { return failure.error.what(); },
            [](NimbrelExportError::NoDatabase) -> std::string { return "no Messages database"; },
            [](NimbrelExportError::AccessDenied) -> std::string { return "access to the Messages database denied"; },
            [](NimbrelExportError::SnapshotUnreadable) -> std::string { return "every snapshot was damaged"; },
        },
        reason);
}

} // namespace

NimbrelExportError::NimbrelExportError(Reason reason) : reason_(std::move(reason)), description_(describe(reason_))
{
}

} // namespace vorn
