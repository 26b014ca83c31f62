#pragma once

#include <string>
#include <vector>

namespace vorn::testing {

/// The texts that users may read when something goes wrong, as the programs print them, with sample values.
std::vector<std::string> problemTexts();

} // namespace vorn::testing
