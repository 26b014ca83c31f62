#include "NimbrelExportKit/Messages/AttributedBodyDecoder.h"
#include "Platform/Base/Text.h"
#include "fuzz/Require.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const vorn::ByteView bytes = std::as_bytes(std::span(data, size));
    const auto text = vorn::AttributedBodyDecoder::decode(bytes);
    if (!text) return 0;
    const vorn::ByteView found = vorn::bytesOf(*text);
    vorn::require(vorn::text::isWellFormed(*text), "a decoded text is well-formed");
    vorn::require(found.empty() || (found.data() > bytes.data() && &found.back() <= &bytes.back()),
                  "a decoded text lies in the data");
    return 0;
}
