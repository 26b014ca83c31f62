#include "VornMacCore/Wire/DeviceIdentity.h"
#include "tests/support/ScopedEnvironment.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::ScopedEnvironment;

TEST(DeviceSignals, AreThoseOfThisComputer)
{
    const ScopedEnvironment zone("TZ", "Asia/Tokyo");
    const ScopedEnvironment locale("LC_ALL", "sr_RS.UTF-8@latin");
    EXPECT_EQ(currentDeviceSignals(), (DeviceSignals{"Asia/Tokyo", "sr-Latn-RS"}));
}

} // namespace
} // namespace vorn
