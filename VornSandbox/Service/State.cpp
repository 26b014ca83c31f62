#include "VornSandbox/Service/State.h"

#include "Platform/Base/ASCII.h"
#include "Platform/Base/FileManager.h"
#include "Platform/Base/SHA256.h"
#include "Platform/Base/UUID.h"
#include "VornSandbox/Service/EmbeddedFiles.h"

#include <fmt/format.h>

#include <cerrno>
#include <exception>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>

namespace vorn::sandbox {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view temporaryPrefix = "vorn-sandbox-uploads-";
constexpr fs::perms ownerOnly = fs::perms::owner_read | fs::perms::owner_write;

[[noreturn]] void fail(const char* what, const fs::path& file)
{
    throw fs::filesystem_error(what, file, std::error_code(errno, std::generic_category()));
}

/// Takes the folder's lock, which is released when the process ends. On failure, empty with `errno` set: EWOULDBLOCK if
/// another run holds it.
FileDescriptor lockOf(const fs::path& folder)
{
    FileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return descriptor && flock(descriptor.get(), LOCK_EX | LOCK_NB) == 0 ? std::move(descriptor) : FileDescriptor(-1);
}

/// SQLite gives the files it makes beside the database the database's own mode.
void makePrivate(const fs::path& database)
{
    if (!fs::exists(database) && !createPrivateFile(database)) fail("cannot make", database);
    for (const char* suffix : {"", "-wal", "-shm"}) {
        const fs::path file = database.string() + suffix;
        if (fs::exists(file)) fs::permissions(file, ownerOnly);
    }
}

void makePrivateFolder(const fs::path& folder)
{
    if (!fs::is_directory(folder)) FileManager::standard().createPrivateDirectory(folder);
}

std::string reasonOf(const std::exception& error)
{
    const auto* const fromSystem = dynamic_cast<const std::system_error*>(&error);
    return fromSystem == nullptr ? error.what() : fromSystem->code().message();
}

void removeAbandoned(const fs::path& temporary)
{
    std::vector<fs::path> found;
    std::error_code ignored; // what cannot be listed or removed is left to the next run
    for (fs::directory_iterator entry(temporary, ignored), end; entry != end; entry.increment(ignored)) {
        if (entry->path().filename().string().starts_with(temporaryPrefix)) found.push_back(entry->path());
    }
    for (const auto& folder : found) {
        if (lockOf(folder)) fs::remove_all(folder, ignored);
    }
}

std::string randomDigits()
{
    std::string digits = ascii::lowercased(newUUID());
    std::erase(digits, '-');
    return digits;
}

} // namespace

StateFolder::StateFolder(const std::optional<fs::path>& folder)
    : isKept_(folder.has_value()), path_(folder.value_or(fs::path()))
{
    try {
        isKept_ ? keep() : makeTemporary();
    } catch (const std::exception& error) {
        throw std::runtime_error(fmt::format("cannot keep the state in {}: {}", path_.string(), reasonOf(error)));
    }
}

void StateFolder::keep()
{
    makePrivateFolder(path_);
    lock_ = lockOf(path_);
    if (!lock_ && errno == EWOULDBLOCK) throw std::runtime_error("another sandbox is using it");
    if (!lock_) fail("cannot lock", path_);
    makePrivate(database());
    makePrivateFolder(uploads());
    fs::permissions(uploads(), fs::perms::owner_all);
}

/// The folder is locked before it gets its final name: no other run ever sees it unlocked while its owner lives.
void StateFolder::makeTemporary()
{
    const fs::path temporary = FileManager::standard().temporaryDirectory();
    removeAbandoned(temporary);
    path_ = temporary / newIdentifier(".vorn-sandbox-");
    makePrivateFolder(path_);
    lock_ = lockOf(path_);
    const fs::path named = temporary / newIdentifier(temporaryPrefix);
    fs::rename(path_, named);
    path_ = named;
}

StateFolder::~StateFolder()
{
    std::error_code ignored; // at the end of the program, a failure cannot be reported
    if (!isKept_) fs::remove_all(path_, ignored);
}

State::State(const StateFolder& folder, Clock clock)
    : database_(folder.database(), SQLiteDatabase::Mode::create), clock_(std::move(clock))
{
    try {
        database_.execute(stateSchema);
    } catch (const SQLiteError& error) {
        const std::string place = fs::path(folder.database()).string();
        throw std::runtime_error(fmt::format("cannot keep the state in {}: {}", place, error.what()));
    }
}

void State::waitForChange(std::unique_lock<std::mutex>& lock, std::chrono::milliseconds atMost) const
{
    change_.wait_for(lock, atMost);
}

void State::run(const std::string& sql, const std::vector<SQLiteValue>& values)
{
    database_.run(sql, values);
    ++version_;
    change_.notify_all();
}

std::optional<std::int64_t> State::number(const std::string& sql, const std::vector<SQLiteValue>& values) const
{
    std::optional<std::int64_t> number;
    query(sql + " LIMIT 1", values, [&](const SQLiteRow& row) { number = row.int64(0); });
    return number;
}

std::optional<std::string> State::text(const std::string& sql, const std::vector<SQLiteValue>& values) const
{
    std::optional<std::string> text;
    query(sql + " LIMIT 1", values, [&](const SQLiteRow& row) { text = row.text(0); });
    return text;
}

nlohmann::json State::list(const std::string& sql, const std::vector<SQLiteValue>& values) const
{
    nlohmann::json list = nlohmann::json::array();
    query(sql, values,
          [&](const SQLiteRow& row) { list.push_back(nlohmann::json::parse(row.text(0).value_or("null"))); });
    return list;
}

std::string newIdentifier(std::string_view prefix)
{
    return std::string(prefix) + randomDigits();
}

std::string newSecret()
{
    return randomDigits() + randomDigits();
}

std::string hashOf(std::string_view secret)
{
    SHA256 hash;
    hash.update(bytesOf(secret));
    return hash.hexDigest();
}

std::string dateText(std::int64_t milliseconds)
{
    return internetDateTime(Instant(std::chrono::milliseconds(milliseconds)));
}

SQLiteValue orNull(const std::optional<std::string>& text)
{
    return text ? SQLiteValue(*text) : SQLiteValue(nullptr);
}

} // namespace vorn::sandbox
