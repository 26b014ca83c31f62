#include "NimbrelExportKit/Messages/PreferredMIMEType.h"

#include "NimbrelExportKit/Messages/DeclaredTypes.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using testing::Optional;
using testing::StrEq;

struct Declared {
    std::string_view identifier;
    std::string_view mimeType;
};

/// Both must agree on every platform: on a Mac, the system itself declares the types that chats carry.
void expectBothSay(std::string_view identifier, std::string_view mimeType)
{
    SCOPED_TRACE(identifier);
    EXPECT_THAT(declaredMIMEType(identifier), Optional(StrEq(mimeType)));
    EXPECT_THAT(preferredMIMEType(identifier), Optional(StrEq(mimeType)));
}

TEST(PreferredMIMEType, KnowsWhatChatsCarry)
{
    constexpr Declared cases[] = {
        {"public.jpeg", "image/jpeg"},
        {"public.png", "image/png"},
        {"public.heic", "image/heic"},
        {"com.compuserve.gif", "image/gif"},
        {"com.apple.quicktime-movie", "video/quicktime"},
        {"public.mpeg-4", "video/mp4"},
        {"public.mp3", "audio/mpeg"},
        {"com.apple.m4a-audio", "audio/x-m4a"},
        {"com.adobe.pdf", "application/pdf"},
        {"public.vcard", "text/vcard"},
        {"com.microsoft.waveform-audio", "audio/vnd.wave"},
        {"public.zip-archive", "application/zip"},
        {"public.data", "application/octet-stream"},
    };
    for (const auto& [identifier, mimeType] : cases) expectBothSay(identifier, mimeType);
}

TEST(PreferredMIMEType, KeepsParametersOfAType)
{
    expectBothSay("public.utf8-plain-text", "text/plain;charset=utf-8");
}

TEST(PreferredMIMEType, ComparesIdentifiersWithoutRegardToCase)
{
    expectBothSay("PUBLIC.JPEG", "image/jpeg");
    expectBothSay("com.apple.iWork.Pages.sffpages", "application/x-iwork-pages-sffpages");
    expectBothSay("com.apple.iwork.pages.sffpages", "application/x-iwork-pages-sffpages");
}

TEST(PreferredMIMEType, FindsTheFirstAndTheLastRow)
{
    EXPECT_THAT(declaredMIMEType("com.adobe.flash.video"), Optional(StrEq("video/x-flv")));
    EXPECT_THAT(declaredMIMEType("vnd.android.package-archive"),
                Optional(StrEq("application/vnd.android.package-archive")));
}

TEST(PreferredMIMEType, IsNothingForTypesWithoutAMIMEType)
{
    // Voice messages: declared by the system, without a MIME type.
    for (const std::string_view identifier : {"com.apple.coreaudio-format", "public.image", "public.movie"}) {
        SCOPED_TRACE(identifier);
        EXPECT_EQ(declaredMIMEType(identifier), std::nullopt);
        EXPECT_EQ(preferredMIMEType(identifier), std::nullopt);
    }
}

TEST(PreferredMIMEType, IsNothingForUnknownIdentifiers)
{
    for (const std::string_view identifier :
         {std::string_view(), std::string_view("public.jpe"), std::string_view("public.jpegx"),
          std::string_view("jpeg"), std::string_view("public.jpeg\0", 12), std::string_view(" public.jpeg"),
          std::string_view("zzz")}) {
        SCOPED_TRACE(identifier);
        EXPECT_EQ(declaredMIMEType(identifier), std::nullopt);
        EXPECT_EQ(preferredMIMEType(identifier), std::nullopt);
    }
}

} // namespace
} // namespace vorn
