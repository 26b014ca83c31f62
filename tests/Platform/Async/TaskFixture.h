#pragma once

#include "Platform/Async/MainContext.h"
#include "tests/Platform/Async/Gate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {

struct TaskFixture : ::testing::Test {
    Journal journal;
    Gate<> gate;
    MainContext context;
};

} // namespace vorn
