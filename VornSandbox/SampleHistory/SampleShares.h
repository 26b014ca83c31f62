#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

/// How often a sample history holds what.
namespace vorn::sampleShares {

// Chances in a thousand.
inline constexpr unsigned reactions = 45;
inline constexpr unsigned happenings = 3;
inline constexpr unsigned happeningsInGroups = 14;
inline constexpr unsigned unsent = 4;
inline constexpr unsigned emptyRows = 3;
inline constexpr unsigned undatedRows = 2;
inline constexpr unsigned withAttachment = 40;
inline constexpr unsigned withLink = 84; // of the rows without attachments: 8 in a hundred of all
inline constexpr unsigned editedRows = 12;
inline constexpr unsigned threads = 50;
inline constexpr unsigned blobOnly = 600;
inline constexpr unsigned textOnly = 80;

/// A kind of attached file. `exportedType` is the MIME type that an export gives it.
struct FileKind {
    std::string_view prefix;
    std::string_view suffix;
    std::optional<std::string_view> uti;
    std::optional<std::string_view> mimeType;
    std::string_view exportedType;
};

// Twenty in all, so that each stands for five in a hundred.
inline constexpr FileKind jpeg{"IMG_", ".JPG", "public.jpeg", "image/jpeg", "image/jpeg"};
inline constexpr FileKind heic{"IMG_", ".HEIC", "public.heic", "image/heic", "image/heic"};
inline constexpr FileKind voice{"Audio Message ", ".caf", "com.apple.coreaudio-format", "", "application/octet-stream"};
inline constexpr FileKind pdf{"Scan ", ".pdf", "com.adobe.pdf", "application/pdf", "application/pdf"};
inline constexpr FileKind movie{"IMG_", ".MOV", "com.apple.quicktime-movie", "video/quicktime", "video/quicktime"};
inline constexpr FileKind screenshot{"Screenshot ", ".png", "public.png", std::nullopt, "image/png"};
inline constexpr FileKind unknown{"notes ", ".vrnx", "dyn.ah62d4rv4ge81q7k2", std::nullopt, "application/octet-stream"};
inline constexpr FileKind nameless{"file ", "", std::nullopt, std::nullopt, "application/octet-stream"};
inline constexpr std::array fileKinds{jpeg, jpeg, jpeg, jpeg,  jpeg,  jpeg,  heic,       heic,       heic,    heic,
                                      heic, pdf,  pdf,  voice, voice, movie, screenshot, screenshot, unknown, nameless};

/// A value of `associated_message_type` and the words that stand in the reaction's text.
struct Reaction {
    std::int64_t type;
    std::string_view verb;
};
inline constexpr std::array reactionKinds{Reaction{2000, "Loved"},          Reaction{2001, "Liked"},
                                          Reaction{2002, "Disliked"},       Reaction{2003, "Laughed at"},
                                          Reaction{2004, "Emphasized"},     Reaction{2005, "Questioned"},
                                          Reaction{2006, "Reacted 🫶🏼 to"}};
inline constexpr std::int64_t takenBack = 1000; // is added to a reaction's type

} // namespace vorn::sampleShares
