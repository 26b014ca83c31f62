#pragma once

#include "Platform/Base/FileDescriptor.h"
#include "Platform/SQLite/SQLiteDatabase.h"
#include "VornSandbox/Service/Settings.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::sandbox {

/// The folder that a run works in, locked while the object lives. Everything put into it is for this user only (modes
/// 0700 and 0600), but an existing folder keeps its own mode.
class StateFolder {
public:
    /// Keeps `folder` for the next run, and creates it if it is missing; without one, works in a temporary folder that
    /// is removed with the object. As that folder holds messages, the next run removes what a killed run left. Throws
    /// `std::runtime_error`, with a message for users, if nothing can be kept there.
    explicit StateFolder(const std::optional<std::filesystem::path>& folder);
    ~StateFolder();
    StateFolder(StateFolder&&) = delete;

    /// The folder of uploads.
    std::filesystem::path uploads() const { return isKept_ ? path_ / "uploads" : path_; }
    /// The file of the database; SQLite's name for memory when nothing is kept.
    std::string database() const { return isKept_ ? (path_ / "state.sqlite").string() : ":memory:"; }

private:
    void keep();
    void makeTemporary();

    bool isKept_;
    std::filesystem::path path_;
    FileDescriptor lock_{-1};
};

/// The service's state: links, sessions, submissions and their parts, in SQLite tables, and the one lock around them.
/// Threads: `lock` before every other call, and never read a request's body or hash a file while it is held.
class State {
public:
    /// Throws `std::runtime_error`, with a message for users, if the folder's database cannot be used.
    State(const StateFolder& folder, Clock clock);

    std::unique_lock<std::mutex> lock() const { return std::unique_lock(mutex_); }

    /// Sleeps until something changes, for `atMost` at most; releases `lock` meanwhile.
    void waitForChange(std::unique_lock<std::mutex>& lock, std::chrono::milliseconds atMost) const;
    /// Grows with every change.
    std::int64_t version() const { return version_; }

    /// The current time, in milliseconds since 1970 like all times here.
    std::int64_t now() const { return clock_().time_since_epoch().count(); }

    /// Runs one statement and wakes every `waitForChange`.
    void run(const std::string& sql, const std::vector<SQLiteValue>& values = {});
    void query(const std::string& sql, const std::vector<SQLiteValue>& values, const SQLiteDatabase::OnRow& onRow) const
    {
        database_.query(sql, values, onRow);
    }
    /// The first column of the first row; nothing when there is no row, and for NULL.
    std::optional<std::int64_t> number(const std::string& sql, const std::vector<SQLiteValue>& values) const;
    std::optional<std::string> text(const std::string& sql, const std::vector<SQLiteValue>& values) const;
    /// The first column of each row, read as JSON.
    nlohmann::json list(const std::string& sql, const std::vector<SQLiteValue>& values = {}) const;

private:
    SQLiteDatabase database_;
    Clock clock_;
    mutable std::mutex mutex_;
    mutable std::condition_variable change_;
    std::int64_t version_ = 0; ///< guarded by the lock
};

/// `prefix` and 32 random hexadecimal digits, such as "sub_0a1b…": unique, but not secret.
std::string newIdentifier(std::string_view prefix);

/// 64 random hexadecimal digits (244 random bits).
std::string newSecret();

/// What is stored of a secret: its SHA-256, so that a copy of the state grants no access.
std::string hashOf(std::string_view secret);

/// `milliseconds` since 1970 as "2026-03-01T09:15:00Z".
std::string dateText(std::int64_t milliseconds);

/// A value to store; NULL if there is none.
SQLiteValue orNull(const std::optional<std::string>& text);

} // namespace vorn::sandbox
