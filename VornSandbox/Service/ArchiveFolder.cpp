#include "VornSandbox/Service/ArchiveFolder.h"

#include "Platform/Base/FileDescriptor.h"
#include "Platform/Base/FileManager.h"
#include "Platform/Base/SHA256.h"
#include "VornSandbox/Service/Secrets.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <unistd.h>

namespace vorn::sandbox {
namespace {

constexpr std::size_t pieceSize = 1024 * std::size_t{1024};
constexpr auto incomingPrefix = "incoming-";

[[noreturn]] void fail(const char* what, const std::filesystem::path& file)
{
    throw std::filesystem::filesystem_error(what, file, std::error_code(errno, std::generic_category()));
}

void writeAll(int descriptor, std::string_view bytes, const std::filesystem::path& file)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) fail("cannot write", file);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

std::size_t readSome(int descriptor, std::string& into, const std::filesystem::path& file)
{
    while (true) {
        const ssize_t count = ::read(descriptor, into.data(), into.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) fail("cannot read", file);
        return static_cast<std::size_t>(count);
    }
}

void makeFolder(const std::filesystem::path& folder)
{
    if (!std::filesystem::is_directory(folder)) FileManager::standard().createPrivateDirectory(folder);
}

/// Half a part, and what earlier versions unpacked there: nobody asks for them again.
bool isLeftover(const std::filesystem::path& file)
{
    const std::string name = file.filename().string();
    return name.starts_with(incomingPrefix) || name == "messages.json";
}

void removeLeftovers(const std::filesystem::path& root)
{
    std::vector<std::filesystem::path> leftovers;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        if (entry.is_regular_file() && isLeftover(entry.path())) leftovers.push_back(entry.path());
    }
    for (const auto& file : leftovers) FileManager::standard().remove(file);
}

} // namespace

struct IncomingPart::Writer {
    FileDescriptor descriptor;
    SHA256 hash;
    std::int64_t size = 0;
};

IncomingPart::IncomingPart(std::filesystem::path file) : file_(std::move(file))
{
    writer_ = std::make_unique<Writer>(Writer{.descriptor = createPrivateFile(file_), .hash = {}});
    if (!writer_->descriptor) fail("cannot make", file_);
}

IncomingPart::~IncomingPart()
{
    std::error_code ignored; // kept parts have moved away; others may have gone with their folder
    std::filesystem::remove(file_, ignored);
}

void IncomingPart::write(std::string_view bytes)
{
    writeAll(writer_->descriptor.get(), bytes, file_);
    writer_->hash.update(bytesOf(bytes));
    writer_->size += static_cast<std::int64_t>(bytes.size());
}

std::int64_t IncomingPart::size() const
{
    return writer_->size;
}

std::string IncomingPart::finish()
{
    if (writer_->descriptor.reset() != 0) fail("cannot write", file_);
    return '"' + writer_->hash.hexDigest().substr(0, 32) + '"';
}

ArchiveFolder::ArchiveFolder(const std::optional<std::filesystem::path>& folder)
{
    root_ = folder ? *folder : temporary_.emplace().path();
    makeFolder(root_);
    removeLeftovers(root_);
}

std::filesystem::path ArchiveFolder::folderOf(const std::string& submissionId) const
{
    return root_ / submissionId;
}

std::filesystem::path ArchiveFolder::partFile(const std::string& submissionId, std::int64_t number) const
{
    return folderOf(submissionId) / ("part-" + std::to_string(number));
}

std::filesystem::path ArchiveFolder::archive(const std::string& submissionId) const
{
    return folderOf(submissionId) / "archive.zip";
}

std::unique_ptr<IncomingPart> ArchiveFolder::receivePart(const std::string& submissionId)
{
    makeFolder(folderOf(submissionId));
    return std::make_unique<IncomingPart>(folderOf(submissionId) / newIdentifier(incomingPrefix));
}

void ArchiveFolder::keepPart(const IncomingPart& part, const std::string& submissionId, std::int64_t number)
{
    std::filesystem::rename(part.file(), partFile(submissionId, number));
}

ArchiveFolder::Assembled ArchiveFolder::assemble(const std::string& submissionId, std::int64_t count)
{
    const std::filesystem::path target = archive(submissionId);
    std::filesystem::remove(target);
    const FileDescriptor output = createPrivateFile(target);
    if (!output) fail("cannot make", target);
    SHA256 hash;
    Assembled assembled;
    std::string piece(pieceSize, '\0');
    for (std::int64_t number = 1; number <= count; ++number) {
        const std::filesystem::path file = partFile(submissionId, number);
        const FileDescriptor input = openRegularFile(file);
        if (!input) fail("cannot open", file);
        while (const std::size_t length = readSome(input.get(), piece, file)) {
            const std::string_view bytes = std::string_view(piece).substr(0, length);
            hash.update(bytesOf(bytes));
            writeAll(output.get(), bytes, target);
            assembled.size += static_cast<std::int64_t>(length);
        }
    }
    assembled.sha256 = hash.hexDigest();
    return assembled;
}

void ArchiveFolder::dropParts(const std::string& submissionId)
{
    std::vector<std::filesystem::path> parts;
    for (const auto& entry : std::filesystem::directory_iterator(folderOf(submissionId))) {
        if (entry.path().filename().string().starts_with("part-")) parts.push_back(entry.path());
    }
    for (const auto& part : parts) FileManager::standard().remove(part);
}

void ArchiveFolder::removeAll(const std::string& submissionId)
{
    FileManager::standard().remove(folderOf(submissionId));
}

} // namespace vorn::sandbox
