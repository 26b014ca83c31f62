#pragma once

#include "Platform/SQLite/SQLiteDatabase.h"
#include "VornSandbox/SampleHistory/SampleHistory.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace vorn::testing {

/// A sample history in a folder of its own, for queries.
class WrittenHistory {
public:
    explicit WrittenHistory(const SampleHistoryOptions& options);

    const SampleHistorySummary& summary() const { return summary_; }
    const TemporaryFolder& folder() const { return folder_; }
    std::filesystem::path path() const { return folder_ / "chat.db"; }

    /// The first column of the rows; NULL reads as "NULL".
    std::vector<std::string> texts(const std::string& sql) const;

    /// The first column of the only row.
    std::int64_t number(const std::string& sql) const;

    /// Every value of every table: the column, as "message.guid", to its values by row.
    std::map<std::string, std::string> content() const;

private:
    TemporaryFolder folder_;
    SampleHistorySummary summary_;
};

} // namespace vorn::testing
