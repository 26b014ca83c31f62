#include "VornSandbox/SampleHistory/SampleInsert.h"

#include "Platform/Base/Match.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string>

namespace vorn {
namespace {

std::string statementFor(std::string_view table, SampleInsert::Row row)
{
    std::vector<std::string_view> columns;
    for (const auto& [column, value] : row) columns.push_back(column);
    const std::vector<std::string_view> places(columns.size(), "?");
    return fmt::format("INSERT INTO {} ({}) VALUES ({})", table, fmt::join(columns, ", "), fmt::join(places, ", "));
}

SQLiteValue owned(const SampleInsert::Value& value)
{
    return std::visit(Match{[](std::string_view text) { return SQLiteValue(std::string(text)); },
                            [](ByteView bytes) { return SQLiteValue(ByteBuffer(bytes.begin(), bytes.end())); },
                            [](auto plain) { return SQLiteValue(plain); }},
                      value);
}

} // namespace

void SampleInsert::run(Row row)
{
    if (!statement_) statement_ = database_.prepare(statementFor(table_, row));
    values_.clear();
    for (const auto& [column, value] : row) values_.push_back(owned(value));
    statement_->run(values_);
}

} // namespace vorn
