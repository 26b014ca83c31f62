#include "VornSandbox/Service/Archive/MessagePages.h"

#include "VornSandbox/Service/Archive/ArchiveError.h"
#include "VornSandbox/Service/Archive/ArchiveInspection.h"
#include "VornSandbox/Service/Archive/ElementScanner.h"
#include "VornSandbox/Service/Archive/ZipArchive.h"

#include <algorithm>
#include <fstream>

namespace vorn::sandbox {
namespace {

const ZipArchive::Entry& entryNamed(const ZipArchive& zip, const char* name)
{
    const auto found = std::ranges::find(zip.entries(), name, &ZipArchive::Entry::name);
    if (found == zip.entries().end()) throw ArchiveError(std::string("The archive has no ") + name + ".");
    return *found;
}

} // namespace

MessagePages::MessagePages(const std::filesystem::path& archive, std::filesystem::path unpacked)
    : unpacked_(std::move(unpacked))
{
    const ZipArchive zip(archive);
    std::string manifest;
    zip.read(entryNamed(zip, manifestEntryName), [&](std::string_view piece) { manifest += piece; });
    manifest_ = nlohmann::json::parse(manifest, nullptr, false);
    // Elements, each with a comma, and no brackets: any run of them is an array but for its ends.
    std::ofstream file(unpacked_, std::ios::binary | std::ios::trunc);
    std::filesystem::permissions(unpacked_, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    std::uint64_t at = 0;
    ElementScanner scanner([&](std::string_view text) {
        if (count_++ % perPage == 0) starts_.push_back(at);
        file << text << ",";
        at += text.size() + 1;
    });
    zip.read(entryNamed(zip, messagesEntryName), [&](std::string_view piece) { scanner.take(piece); });
    scanner.finish();
    starts_.push_back(at);
    file.flush();
    if (!file) throw ArchiveError("The messages could not be unpacked.");
}

nlohmann::json MessagePages::page(std::int64_t page) const
{
    if (page < 0 || page + 1 >= static_cast<std::int64_t>(starts_.size())) return nlohmann::json::array();
    const std::uint64_t start = starts_[static_cast<std::size_t>(page)];
    const std::uint64_t length = starts_[static_cast<std::size_t>(page) + 1] - start;
    std::string text(length, '\0');
    std::ifstream file(unpacked_, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(start));
    file.read(text.data(), static_cast<std::streamsize>(length));
    if (!file) throw ArchiveError("The unpacked messages are gone.");
    text.back() = ']'; // in place of the last comma
    auto messages = nlohmann::json::parse("[" + text, nullptr, false);
    if (messages.is_discarded()) throw ArchiveError("A message is no JSON.");
    return messages;
}

} // namespace vorn::sandbox
