#pragma once

#include <string>
#include <vector>

namespace vorn::bench {

/// A goal: reached if `figure` is at most `limit`. `text` is the limit as the table shows it.
struct Goal {
    double figure = 0, limit = 0;
    std::string text;
};

/// A table in Markdown on standard output; a row with a goal says whether it is reached. Not copyable, as it keeps
/// track of the goals.
class Table {
public:
    /// Prints the header: `names` heads the first column, `columns` those with figures.
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
