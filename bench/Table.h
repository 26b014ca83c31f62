#pragma once

#include <string>
#include <vector>

namespace vorn::bench {

/// A figure's goal: reached if it is at most `limit`. `text` is the limit for the reader.
struct Goal {
    double figure = 0, limit = 0;
    std::string text;
};

/// A table in Markdown on standard output; a row with a goal says whether it is reached. Not copied: it counts.
class Table {
public:
    /// Prints the head: the name of the first column, and those of the columns with figures.
    Table(const std::string& names, const std::vector<std::string>& columns);
    Table(Table&&) = delete;

    /// Adds a row without a goal, for comparison.
    void add(const std::string& name, const std::vector<std::string>& figures);
    void add(const std::string& name, const std::vector<std::string>& figures, const Goal& goal);

    /// Whether all goals so far are reached.
    bool isReached() const noexcept { return isReached_; }

private:
    bool isReached_ = true;
};

/// `value` with its unit if it has one, "1.20 ms".
std::string figure(double value, const char* unit, int decimals = 2);

double median(std::vector<double> values);

} // namespace vorn::bench
