#include "NimbrelExportKit/Messages/HandleNormalizer.h"
#include "Platform/Base/Text.h"
#include "fuzz/Require.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string handle = vorn::text::repaired({reinterpret_cast<const char*>(data), size});
    const std::string once = vorn::HandleNormalizer::normalize(handle);
    vorn::require(vorn::text::isWellFormed(once), "a normalised handle is well-formed");
    vorn::require(once.size() <= 3 * handle.size(), "lower case is at most three times as long");
    vorn::require(vorn::HandleNormalizer::normalizedSet({handle, once, ""}).count("") == 0, "no handle is empty");
    return 0;
}
