#include "NimbrelExportKit/Links/Scalars.h"

#include <gtest/gtest.h>

namespace vorn::links {
namespace {

TEST(Scalars, ReadsForwardsAndBackwards)
{
    constexpr std::string_view text = "aé東😀";
    constexpr std::pair<char32_t, std::size_t> expected[] = {{U'a', 1}, {U'é', 2}, {U'東', 3}, {U'😀', 4}};
    std::size_t at = 0;
    for (const auto& [value, size] : expected) {
        EXPECT_EQ(scalarAt(text, at).value, value);
        EXPECT_EQ(scalarAt(text, at).size, size);
        at += size;
        EXPECT_EQ(scalarBefore(text, at).value, value);
        EXPECT_EQ(scalarBefore(text, at).size, size);
    }
    EXPECT_EQ(at, text.size());
}

TEST(Scalars, ReadsIllFormedBytesOneAtATime)
{
    for (const std::string_view text : {"\x80", "\xFF", "\xC0\x80", "\xE6\x9D", "\xF0\x9F\x98", "\xE6zz"}) {
        EXPECT_EQ(scalarAt(text, 0).value, U'\uFFFD');
        EXPECT_EQ(scalarAt(text, 0).size, 1U);
    }
    EXPECT_EQ(scalarBefore("a\x80", 2).value, U'\uFFFD');
    EXPECT_EQ(scalarBefore("a\x80", 2).size, 1U);
    EXPECT_EQ(scalarBefore("\x80\x80\x80\x80\x80", 5).size, 1U);
}

TEST(Scalars, TellsKindsOfTextApart)
{
    struct Case {
        char32_t scalar;
        Script script;
    };
    constexpr Case cases[] = {
        {U'a', Script::latin},       {U'ß', Script::latin},       {U'ő', Script::latin},
        {U'ж', Script::spaced},      {U'λ', Script::spaced},      {U'क', Script::spaced},
        {U'ש', Script::rightToLeft}, {U'م', Script::rightToLeft}, {U'ﻡ', Script::rightToLeft},
        {U'東', Script::unspaced},   {U'の', Script::unspaced},   {U'한', Script::unspaced},
        {U'ไ', Script::unspaced},    {U'８', Script::unspaced},   {U'😀', Script::symbol},
        {U'→', Script::symbol},      {U'€', Script::symbol},      {0x200D, Script::joiner},
        {0xFE0F, Script::joiner},    {U'–', Script::dash},        {U'’', Script::dash},
        {U'—', Script::none},        {U'…', Script::none},        {U'“', Script::none},
        {U'«', Script::none},        {0x00A0, Script::none},      {0x3000, Script::none},
        {U'。', Script::none},       {U'、', Script::none},       {U'！', Script::none},
        {U'（', Script::none},       {U'」', Script::none},       {U'｜', Script::none},
        {0x202E, Script::none},      {0xFEFF, Script::none},      {0xFFFC, Script::none},
        {U'،', Script::none},        {0x10FFFF, Script::none},
    };
    for (const auto& [scalar, script] : cases) {
        EXPECT_EQ(scriptOf(scalar), script) << "U+" << std::hex << static_cast<unsigned>(scalar);
    }
}

} // namespace
} // namespace vorn::links
