#include "bench/Table.h"

#include <algorithm>
#include <cstdio>

namespace vorn::bench {
namespace {

void printRow(std::vector<std::string> cells, const std::string& reach, const std::string& reached)
{
    cells.push_back(reach);
    cells.push_back(reached);
    for (const std::string& cell : cells) std::printf("| %s ", cell.c_str());
    std::puts("|");
    std::fflush(stdout);
}

std::vector<std::string> cellsOf(const std::string& name, const std::vector<std::string>& figures)
{
    std::vector<std::string> cells{name};
    cells.insert(cells.end(), figures.begin(), figures.end());
    return cells;
}

} // namespace

Table::Table(const std::string& names, const std::vector<std::string>& columns)
{
    printRow(cellsOf(names, columns), "Reach", "Reached");
    printRow(std::vector<std::string>(columns.size() + 1, "---"), "---", "---");
}

void Table::add(const std::string& name, const std::vector<std::string>& figures)
{
    printRow(cellsOf(name, figures), "–", "–");
}

void Table::add(const std::string& name, const std::vector<std::string>& figures, const Goal& goal)
{
    const bool reached = goal.figure <= goal.limit;
    isReached_ = isReached_ && reached;
    printRow(cellsOf(name, figures), goal.text, reached ? "yes" : "NO");
}

std::string figure(double value, const char* unit, int decimals)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return *unit == 0 ? text : std::string(text) + ' ' + unit;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

} // namespace vorn::bench
