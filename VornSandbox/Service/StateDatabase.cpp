#include "VornSandbox/Service/StateDatabase.h"

#include "VornSandbox/Service/Secrets.h"

#include <stdexcept>
#include <utility>

namespace vorn::sandbox {
namespace {

// Times are milliseconds since 1970. Secrets are kept as their hashes.
constexpr auto schema = R"sql(
PRAGMA journal_mode = WAL;
PRAGMA synchronous = NORMAL;
CREATE TABLE IF NOT EXISTS secret(name TEXT PRIMARY KEY, value TEXT NOT NULL);
CREATE TABLE IF NOT EXISTS link(
    sequence INTEGER PRIMARY KEY, id TEXT UNIQUE NOT NULL, pollHash TEXT NOT NULL, codeHash TEXT UNIQUE NOT NULL,
    deviceName TEXT NOT NULL, platform TEXT NOT NULL, appVersion TEXT NOT NULL, osVersion TEXT,
    createdAt INTEGER NOT NULL, expiresAt INTEGER NOT NULL, status TEXT NOT NULL, userId TEXT,
    delivered INTEGER NOT NULL DEFAULT 0);
CREATE TABLE IF NOT EXISTS session(
    id INTEGER PRIMARY KEY, userId TEXT NOT NULL, deviceName TEXT NOT NULL, createdAt INTEGER NOT NULL,
    accessHash TEXT UNIQUE NOT NULL, accessExpiresAt INTEGER NOT NULL, refreshHash TEXT UNIQUE NOT NULL,
    revoked INTEGER NOT NULL DEFAULT 0);
CREATE TABLE IF NOT EXISTS usedRefresh(hash TEXT PRIMARY KEY, sessionId INTEGER NOT NULL);
CREATE TABLE IF NOT EXISTS submission(
    sequence INTEGER PRIMARY KEY, id TEXT UNIQUE NOT NULL, userId TEXT NOT NULL, attempt INTEGER NOT NULL,
    assetId TEXT UNIQUE NOT NULL, uploadId TEXT NOT NULL, sizeBytes INTEGER NOT NULL, partCount INTEGER NOT NULL,
    partSize INTEGER NOT NULL, timezone TEXT, locale TEXT, status TEXT NOT NULL, reason TEXT, sha256 TEXT,
    createdAt INTEGER NOT NULL, completedAt INTEGER, decidedAt INTEGER, checkedStatus TEXT, checkedReason TEXT,
    finding TEXT NOT NULL DEFAULT '');
CREATE TABLE IF NOT EXISTS part(
    submissionId TEXT NOT NULL, number INTEGER NOT NULL, sizeBytes INTEGER NOT NULL, etag TEXT NOT NULL,
    PRIMARY KEY(submissionId, number));
CREATE TABLE IF NOT EXISTS issuedURL(
    assetId TEXT NOT NULL, number INTEGER NOT NULL, PRIMARY KEY(assetId, number));
)sql";

} // namespace

StateDatabase::StateDatabase(const std::optional<std::filesystem::path>& file, Clock clock)
    : database_(file ? file->string() : ":memory:", SQLiteDatabase::Mode::create), clock_(std::move(clock))
{
    try {
        database_.execute(schema);
    } catch (const SQLiteError& error) {
        throw std::runtime_error("cannot keep the state in " + file.value_or("memory").string() + ": " + error.what());
    }
}

void StateDatabase::waitForChange(std::unique_lock<std::mutex>& lock, std::chrono::milliseconds atMost) const
{
    change_.wait_for(lock, atMost);
}

void StateDatabase::run(const std::string& sql, const std::vector<SQLiteValue>& values) const
{
    database_.run(sql, values);
    changed();
}

std::int64_t StateDatabase::number(const std::string& sql, const std::vector<SQLiteValue>& values) const
{
    std::optional<std::int64_t> number;
    database_.query(sql, values, [&](const SQLiteRow& row) {
        if (!number) number = row.int64OrZero(0);
    });
    return number.value_or(0);
}

std::string StateDatabase::secret(const std::string& name) const
{
    std::string value;
    database_.run("INSERT OR IGNORE INTO secret VALUES (?, ?)", {name, newSecret()});
    database_.query("SELECT value FROM secret WHERE name = ?", {name},
                    [&](const SQLiteRow& row) { value = row.text(0).value_or(""); });
    return value;
}

} // namespace vorn::sandbox
