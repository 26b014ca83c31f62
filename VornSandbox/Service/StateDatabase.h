#pragma once

#include "NimbrelExportKit/SQLite/SQLiteDatabase.h"
#include "Platform/Base/Dates.h"
#include "VornSandbox/Service/Settings.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace vorn::sandbox {

/// What the service remembers: links, sessions, submissions and their parts, in SQLite tables; and the one lock around
/// them. Threads: `lock` before every other call, here and in what works on it, and never read a request's body or
/// hash a file while it is held.
class StateDatabase {
public:
    /// Opens `file`, made if missing, or keeps everything in memory when there is none. `std::runtime_error` when the
    /// file is something else.
    StateDatabase(const std::optional<std::filesystem::path>& file, Clock clock);

    std::unique_lock<std::mutex> lock() const { return std::unique_lock(mutex_); }

    /// Sleeps until somebody says `changed`, `atMost` so long; gives up `lock` meanwhile.
    void waitForChange(std::unique_lock<std::mutex>& lock, std::chrono::milliseconds atMost) const;
    void changed() const
    {
        ++version_;
        change_.notify_all();
    }
    /// Another one after every change.
    std::int64_t version() const { return version_; }

    Instant now() const { return clock_(); }

    /// Runs one statement. Whoever watches is told.
    void run(const std::string& sql, const std::vector<SQLiteValue>& values = {}) const;
    void query(const std::string& sql, const std::vector<SQLiteValue>& values, const SQLiteDatabase::OnRow& onRow) const
    {
        database_.query(sql, values, onRow);
    }
    /// The first number of the first row; 0 when there is none.
    std::int64_t number(const std::string& sql, const std::vector<SQLiteValue>& values) const;

    /// A secret of this state, made when it was first asked for.
    std::string secret(const std::string& name) const;

private:
    SQLiteDatabase database_;
    Clock clock_;
    mutable std::mutex mutex_;
    mutable std::condition_variable change_;
    mutable std::int64_t version_ = 0; ///< guarded by the lock
};

inline std::int64_t toMilliseconds(Instant instant)
{
    return instant.time_since_epoch().count();
}

inline Instant fromMilliseconds(std::int64_t milliseconds)
{
    return Instant(std::chrono::milliseconds(milliseconds));
}

} // namespace vorn::sandbox
