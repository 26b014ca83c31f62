#include "VornSandbox/Service/ArchiveInspection.h"

#include "VornSandbox/Service/ArchiveError.h"
#include "VornSandbox/Service/ElementScanner.h"
#include "VornSandbox/Service/ExportCheck.h"
#include "VornSandbox/Service/ZipArchive.h"

#include <fmt/format.h>

namespace vorn::sandbox {
namespace {

constexpr std::int64_t fewestPrompts = 10;

void readMessages(const ZipArchive& zip, const ZipArchive::Entry& entry, ExportCheck& check)
{
    ElementScanner scanner([&](std::string_view text) { check.readMessage(text); });
    zip.read(entry, [&](std::string_view piece) { scanner.take(piece); });
    scanner.finish();
    check.finish();
}

ExportCheck read(const std::filesystem::path& archive)
{
    const ZipArchive zip(archive);
    const auto& entries = zip.entries();
    if (entries.size() != 2 || entries[0].name != manifestEntryName || entries[1].name != messagesEntryName) {
        throw ArchiveError("The archive does not hold the manifest and then the messages, and nothing else.");
    }
    ExportCheck check;
    check.readManifest(zip.text(entries[0], largestManifest));
    readMessages(zip, entries[1], check);
    return check;
}

} // namespace

ArchiveVerdict inspectArchive(const std::filesystem::path& archive)
{
    try {
        const ExportCheck check = read(archive);
        const std::string finding = fmt::format("{} message{}, {} from the user", check.messages(),
                                                check.messages() == 1 ? "" : "s", check.prompts());
        if (check.prompts() < fewestPrompts) {
            return {.asChecked = {.status = "rejected", .reason = "export_too_small"}, .finding = finding};
        }
        return {.asChecked = {.status = "approved", .reason = {}}, .finding = finding};
    } catch (const ArchiveError& error) {
        return {.asChecked = {.status = "rejected", .reason = "media_unreadable"}, .finding = error.what()};
    }
}

} // namespace vorn::sandbox
