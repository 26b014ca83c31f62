#include "tests/support/steps/StepCount.h"

namespace vorn::testing {
namespace {

std::uint64_t steps = 0;
std::uint64_t stopAt = 0; ///< 0 for none
const std::function<void()>* atStop = nullptr;

void countStep()
{
    if (++steps == stopAt) (*atStop)();
}

} // namespace

std::uint64_t stepsOf(const std::function<void()>& work)
{
    return stepsOf(work, 0, {});
}

std::uint64_t stepsOf(const std::function<void()>& work, std::uint64_t step, const std::function<void()>& then)
{
    steps = 0;
    stopAt = step;
    atStop = &then;
    work();
    stopAt = 0;
    return steps;
}

} // namespace vorn::testing

// Told to trace loads, clang inserts a call of one of these before each read: one function for each size.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" {
void __sanitizer_cov_load1(const void*);
void __sanitizer_cov_load2(const void*);
void __sanitizer_cov_load4(const void*);
void __sanitizer_cov_load8(const void*);
void __sanitizer_cov_load16(const void*);

void __sanitizer_cov_load1(const void*)
{
    vorn::testing::countStep();
}
void __sanitizer_cov_load2(const void*)
{
    vorn::testing::countStep();
}
void __sanitizer_cov_load4(const void*)
{
    vorn::testing::countStep();
}
void __sanitizer_cov_load8(const void*)
{
    vorn::testing::countStep();
}
void __sanitizer_cov_load16(const void*)
{
    vorn::testing::countStep();
}
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)
