#include "VornMac/Text/StatisticsText.h"

#include "Platform/Base/Dates.h"

#include <utility>

namespace vorn {

std::string countText(std::int64_t count)
{
    std::string text = std::to_string(count);
    const std::size_t digits = text.find_first_of("0123456789");
    for (std::size_t at = text.size(); at > digits + 3;) text.insert(at -= 3, 1, ',');
    return text;
}

std::string datesText(const NimbrelExportStats& stats)
{
    return stats.firstAt && stats.lastAt ? dayText(*stats.firstAt) + " – " + dayText(*stats.lastAt) : "";
}

std::vector<StatisticsRow> statisticsRows(const NimbrelExportStats& stats)
{
    std::vector<StatisticsRow> rows{{"Messages", countText(stats.messageCount)},
                                    {"Your messages", countText(stats.promptCount)},
                                    {"Nimbrel replies", countText(stats.replyCount)}};
    if (std::string dates = datesText(stats); !dates.empty()) rows.push_back({"Dates", std::move(dates)});
    return rows;
}

} // namespace vorn
