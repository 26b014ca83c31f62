#include "NimbrelExportKit/Messages/MessageBody.h"

#include "NimbrelExportKit/Messages/AttributedBodyDecoder.h"
#include "Platform/Base/Text.h"

namespace vorn {
namespace {

constexpr std::string_view objectReplacement = "\uFFFC";

/// `text`, which is well-formed, without U+FFFC and without white space at either end. `text` may point into `room`.
std::string_view cleaned(std::string_view text, std::string& room)
{
    std::size_t found = text.find(objectReplacement);
    if (found == std::string_view::npos) return text::trimmed(text);
    std::string kept;
    std::size_t copied = 0;
    for (; found != std::string_view::npos; found = text.find(objectReplacement, copied)) {
        kept.append(text, copied, found - copied);
        copied = found + objectReplacement.size();
    }
    kept.append(text, copied);
    room = std::move(kept);
    return text::trimmed(room);
}

} // namespace

std::string_view messageBody(std::optional<std::string_view> plain, std::optional<ByteView> attributedBody,
                             std::string& room)
{
    const std::string_view body = plain ? cleaned(text::repaired(*plain, room), room) : std::string_view();
    if (!body.empty() || !attributedBody) return body;
    const auto decoded = AttributedBodyDecoder::decode(*attributedBody);
    return decoded ? cleaned(*decoded, room) : body;
}

} // namespace vorn
