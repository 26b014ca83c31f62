#include "NimbrelExportKit/Messages/MessageBody.h"

#include "NimbrelExportKit/Messages/AttributedBodyDecoder.h"
#include "Platform/Base/Text.h"

namespace vorn {
namespace {

constexpr std::string_view objectReplacement = "\uFFFC";

/// `text`, which is well-formed, without U+FFFC and without white space at both ends.
std::string cleaned(std::string_view text)
{
    std::size_t found = text.find(objectReplacement);
    if (found == std::string_view::npos) return std::string(text::trimmed(text));
    std::string kept;
    std::size_t copied = 0;
    for (; found != std::string_view::npos; found = text.find(objectReplacement, copied)) {
        kept.append(text, copied, found - copied);
        copied = found + objectReplacement.size();
    }
    kept.append(text, copied);
    return std::string(text::trimmed(kept));
}

} // namespace

std::string messageBody(std::optional<std::string_view> plain, std::optional<ByteView> attributedBody)
{
    std::string body;
    if (plain) body = text::isWellFormed(*plain) ? cleaned(*plain) : cleaned(text::repaired(*plain));
    if (!body.empty() || !attributedBody) return body;
    const auto decoded = AttributedBodyDecoder::decode(*attributedBody);
    return decoded ? cleaned(*decoded) : body;
}

} // namespace vorn
