#include "VornSandbox/Service/MessagePages.h"

#include "Platform/Base/FileDescriptor.h"
#include "VornSandbox/Service/ArchiveError.h"
#include "VornSandbox/Service/ArchiveInspection.h"
#include "VornSandbox/Service/BoundedJSON.h"
#include "VornSandbox/Service/ElementScanner.h"
#include "VornSandbox/Service/ZipArchive.h"

#include <algorithm>
#include <fstream>
#include <system_error>
#include <utility>

namespace vorn::sandbox {
namespace {

const ZipArchive::Entry& entryNamed(const ZipArchive& zip, const char* name)
{
    const auto found = std::ranges::find(zip.entries(), name, &ZipArchive::Entry::name);
    if (found == zip.entries().end()) throw ArchiveError(std::string("The archive has no ") + name + ".");
    return *found;
}

} // namespace

MessagePages::UnpackedFile::UnpackedFile(std::filesystem::path at) : path(std::move(at))
{
    std::filesystem::remove(path);
    if (!createPrivateFile(path)) throw ArchiveError("The messages could not be unpacked.");
}

MessagePages::UnpackedFile::~UnpackedFile()
{
    std::error_code ignored; // it may have gone with its folder; else the next run removes it
    std::filesystem::remove(path, ignored);
}

MessagePages::MessagePages(const std::filesystem::path& archive, std::filesystem::path unpacked)
    : unpacked_(std::move(unpacked))
{
    const ZipArchive zip(archive);
    manifest_ = parseJSON(zip.text(entryNamed(zip, manifestEntryName), largestManifest)).value_or(nullptr);
    // Elements, each with a comma, and no brackets: any run of them is an array but for its ends.
    std::ofstream file(unpacked_.path, std::ios::binary | std::ios::trunc);
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
    std::ifstream file(unpacked_.path, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(start));
    file.read(text.data(), static_cast<std::streamsize>(length));
    if (!file) throw ArchiveError("The unpacked messages are gone.");
    text.back() = ']'; // in place of the last comma
    auto messages = parseJSON("[" + text, ElementScanner::deepestElement + 1);
    if (!messages) throw ArchiveError("A message is no JSON.");
    return *std::move(messages);
}

} // namespace vorn::sandbox
