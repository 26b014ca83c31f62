#include <cstdlib>
#include <memory>

#include <QGuiApplication>
#include <gtest/gtest.h>

namespace vorn::testing {
namespace {

/// An application without a screen, for every test of the program.
class GuiEnvironment : public ::testing::Environment {
public:
    void SetUp() override
    {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        setenv("QT_QUICK_BACKEND", "software", 1);
        application_ = std::make_unique<QGuiApplication>(count_, values_);
    }
    void TearDown() override { application_.reset(); }

private:
    int count_ = 1;
    char name_[5] = "test";
    char* values_[2] = {name_, nullptr};
    std::unique_ptr<QGuiApplication> application_;
};

[[maybe_unused]] const auto* const environment = ::testing::AddGlobalTestEnvironment(new GuiEnvironment);

} // namespace
} // namespace vorn::testing
