#pragma once

#include <string>
#include <vector>

namespace vorn::testing {

/// What users may read when something stands in their way, as the programs say it, with sample values in it.
std::vector<std::string> problemTexts();

} // namespace vorn::testing
