#include "VornSandbox/SampleHistory/SampleRandom.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(SampleRandom, GivesTheNumbersThatTheLanguageFixes)
{
    SampleRandom random(5489); // the engine's default seed; the standard names its ten-thousandth number
    for (int i = 1; i < 10'000; ++i) random.below(2);
    EXPECT_EQ(random.below(~0ULL), 9981545732273789042ULL);
}

TEST(SampleRandom, StaysInsideItsBounds)
{
    SampleRandom random(1);
    bool low = false;
    bool high = false;
    for (int i = 0; i < 1'000; ++i) {
        const auto number = random.between(-2, 3);
        ASSERT_TRUE(number >= -2 && number <= 3);
        low = low || number == -2;
        high = high || number == 3;
    }
    EXPECT_TRUE(low && high);
}

TEST(SampleRandom, WritesUUIDsOfVersionFour)
{
    SampleRandom random(1);
    std::string first;
    std::string second;
    random.uuid(first);
    random.uuid(second);
    EXPECT_NE(first, second);
    for (const std::string& uuid : {first, second}) {
        SCOPED_TRACE(uuid);
        ASSERT_EQ(uuid.size(), 36U);
        EXPECT_EQ(uuid[14], '4');
        EXPECT_NE(std::string("89AB").find(uuid[19]), std::string::npos);
        for (const std::size_t hyphen : {8U, 13U, 18U, 23U}) EXPECT_EQ(uuid[hyphen], '-');
        EXPECT_EQ(uuid.find_first_not_of("0123456789ABCDEF-"), std::string::npos);
    }
}

} // namespace
} // namespace vorn
