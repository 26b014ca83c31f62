#pragma once

#include <string>
#include <vector>

namespace vorn::bench {

/// A figure to reach: reached when it is at most `limit`. `text` says the limit to the reader.
struct Goal {
    double figure = 0, limit = 0;
    std::string text;
};

/// A table in Markdown on the standard output; a row with a goal says whether it is reached. Not copied: it counts.
class Table {
public:
    /// Prints the heads: of the names, and of the columns with figures.
    Table(const std::string& names, const std::vector<std::string>& columns);
    Table(Table&&) = delete;

    /// A row to compare others with.
    void add(const std::string& name, const std::vector<std::string>& figures);
    void add(const std::string& name, const std::vector<std::string>& figures, const Goal& goal);

    /// Whether all goals so far are.
    bool isReached() const noexcept { return isReached_; }

private:
    bool isReached_ = true;
};

/// `value` with its unit if it has one, "1.20 ms".
std::string figure(double value, const char* unit, int decimals = 2);

double median(std::vector<double> values);

} // namespace vorn::bench
