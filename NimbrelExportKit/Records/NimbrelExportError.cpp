#include "NimbrelExportKit/Records/NimbrelExportError.h"

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

std::string userText(const NimbrelExportError& error)
{
    return std::visit(
        Match{
            [](const NimbrelExportError::Database&) -> std::string {
                return "Vorn couldn't read your Messages history.";
            },
            [](NimbrelExportError::NoDatabase) -> std::string { return "Messages isn't set up on this Mac."; },
            [](NimbrelExportError::AccessDenied) -> std::string { return {}; },
            [](NimbrelExportError::SnapshotUnreadable) -> std::string {
                return "Messages was busy. Try again in a moment.";
            },
        },
        error.reason());
}

} // namespace vorn
