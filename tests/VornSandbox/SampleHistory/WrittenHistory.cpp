#include "tests/VornSandbox/SampleHistory/WrittenHistory.h"

namespace vorn::testing {

WrittenHistory::WrittenHistory(const SampleHistoryOptions& options) : summary_(writeSampleHistory(path(), options))
{
}

std::vector<std::string> WrittenHistory::texts(const std::string& sql) const
{
    std::vector<std::string> texts;
    const SQLiteDatabase database(path().string(), SQLiteDatabase::Mode::queryOnly);
    database.query(sql, {}, [&](const SQLiteRow& row) { texts.push_back(row.text(0).value_or("NULL")); });
    return texts;
}

std::int64_t WrittenHistory::number(const std::string& sql) const
{
    return std::stoll(texts(sql).at(0));
}

std::map<std::string, std::string> WrittenHistory::content() const
{
    std::map<std::string, std::string> content;
    const SQLiteDatabase database(path().string(), SQLiteDatabase::Mode::queryOnly);
    for (const std::string& table : texts("SELECT name FROM sqlite_schema WHERE type = 'table'")) {
        for (const std::string& column : database.columns(table)) {
            std::string& values = content[table + "." + column];
            database.query("SELECT quote(\"" + column + "\") FROM " + table + " ORDER BY rowid", {},
                           [&](const SQLiteRow& row) { values += row.text(0).value_or("") + "\n"; });
        }
    }
    return content;
}

} // namespace vorn::testing
