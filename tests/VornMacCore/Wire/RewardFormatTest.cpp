#include "VornMacCore/Wire/RewardFormat.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <limits>
#include <locale>
#include <random>

namespace vorn {
namespace {

using namespace std::string_literals;

/// Punctuation of a locale that writes "1.234,50".
class CommaPunctuation : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }    // NOLINT(readability-identifier-naming)
    char do_thousands_sep() const override { return '.'; }    // NOLINT(readability-identifier-naming)
    std::string do_grouping() const override { return "\3"; } // NOLINT(readability-identifier-naming)
};

/// Makes a locale with that punctuation the global one for its lifetime.
class ScopedCommaLocale {
public:
    ScopedCommaLocale() : before_(std::locale::global(std::locale(std::locale::classic(), new CommaPunctuation))) {}
    ~ScopedCommaLocale() { std::locale::global(before_); }
    ScopedCommaLocale(ScopedCommaLocale&&) = delete;

private:
    std::locale before_;
};

TEST(RewardFormat, WritesDollarsWithTwoDecimals)
{
    EXPECT_EQ(RewardFormat::usd(3.0), "$3.00");
    EXPECT_EQ(RewardFormat::usd(12.5), "$12.50");
    EXPECT_EQ(RewardFormat::usd(0.0), "$0.00");
    EXPECT_EQ(RewardFormat::usd(-1.5), "$-1.50");
    EXPECT_EQ(RewardFormat::usd(1'234'567.891), "$1234567.89");
    EXPECT_EQ(RewardFormat::usd(0.999), "$1.00");
}

TEST(RewardFormat, RoundsHalvesToTheEvenCent)
{
    EXPECT_EQ(RewardFormat::usd(0.125), "$0.12");
    EXPECT_EQ(RewardFormat::usd(0.375), "$0.38");
    EXPECT_EQ(RewardFormat::usd(2.625), "$2.62");
    EXPECT_EQ(RewardFormat::usd(-0.125), "$-0.12");
    EXPECT_EQ(RewardFormat::usd(2.675), "$2.67"); // the double is a little less than a half
    EXPECT_EQ(RewardFormat::usd(1.005), "$1.00");
}

TEST(RewardFormat, RoundsAsPrintfDoes)
{
    std::mt19937_64 random(20260301); // NOLINT(cert-msc51-cpp,bugprone-random-generator-seed): the same every run
    for (int run = 0; run < 20'000; ++run) {
        // Eighths of a dollar are often exactly halfway between two cents; the others hardly ever are.
        const double eighths = static_cast<double>(static_cast<std::int64_t>(random() % 2'000'001) - 1'000'000) / 8;
        const double any = std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 200) - 150);
        for (const double amount : {eighths, any}) {
            std::array<char, 400> printed{};
            std::snprintf(printed.data(), printed.size(), "$%.2f", amount); // NOLINT: the reference itself
            ASSERT_EQ(RewardFormat::usd(amount), printed.data());
        }
    }
}

TEST(RewardFormat, LeavesAnAbsentAmountAbsent)
{
    EXPECT_EQ(RewardFormat::usd(std::optional<double>()), std::nullopt);
    EXPECT_EQ(RewardFormat::usd(std::optional<double>(3)), "$3.00");
    EXPECT_EQ(RewardFormat::usd(std::optional<std::string>()), std::nullopt);
}

TEST(RewardFormat, ReadsDecimalNumbers)
{
    for (const auto& [text, formatted] : std::initializer_list<std::pair<const char*, const char*>>{
             {"12.5", "$12.50"},
             {"12", "$12.00"},
             {"12.", "$12.00"},
             {".5", "$0.50"},
             {"-1.5", "$-1.50"},
             {"+1", "$1.00"},
             {"007", "$7.00"},
             {"1e3", "$1000.00"},
             {"25E-1", "$2.50"},
             {"1e+2", "$100.00"},
             {"1e-999", "$0.00"},
         }) {
        EXPECT_EQ(RewardFormat::usd(std::optional<std::string>(text)), formatted) << text;
    }
}

TEST(RewardFormat, IsAbsentForEverythingElse)
{
    for (const std::string& text :
         {""s,      " 12"s,  "12 "s,  "12 USD"s, "$12"s,   "12,5"s,   "1,234.50"s, "twelve"s,   "."s,
          "-"s,     "+"s,    "--1"s,  "1.2.3"s,  "1e"s,    "1e+"s,    "e3"s,       "1e3.5"s,    "0x10"s,
          "0x1p3"s, "inf"s,  "-inf"s, "INF"s,    "nan"s,   "NAN(1)"s, "1e999"s,    "infinity"s, "-1e999"s,
          "12\0"s,  "\t12"s, "12\n"s, "١٢"s,     "1'000"s, "1_000"s,  "- 1"s}) {
        EXPECT_EQ(RewardFormat::usd(std::optional<std::string>(text)), std::nullopt) << text;
    }
}

TEST(RewardFormat, ReadsWhatItWrote)
{
    for (const double amount : {0.0, 0.01, 12.5, 1234567.89, -1.5})
        EXPECT_EQ(RewardFormat::dollars(RewardFormat::usd(amount)), amount);
    for (const char* text : {"", "$", "12.50", "the quest reward", "$12.50 ", "$$1"})
        EXPECT_EQ(RewardFormat::dollars(text), std::nullopt) << text;
}

TEST(RewardFormat, IsTheSameInEveryLocale)
{
    const ScopedCommaLocale comma;
    EXPECT_EQ(RewardFormat::usd(1234.5), "$1234.50");
    EXPECT_EQ(RewardFormat::usd(std::optional<std::string>("1234.5")), "$1234.50");
    EXPECT_EQ(RewardFormat::usd(std::optional<std::string>("1.234,5")), std::nullopt);
}

} // namespace
} // namespace vorn
