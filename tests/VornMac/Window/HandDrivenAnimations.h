#pragma once

#include <QAnimationDriver>

namespace vorn::testing {

/// While it lives, animations move only when the test lets time pass. Threads: the main one.
class HandDrivenAnimations final : public QAnimationDriver {
public:
    HandDrivenAnimations() { install(); }
    ~HandDrivenAnimations() override { uninstall(); }

    /// Lets `milliseconds` pass, in steps as long as a screen's frames.
    void pass(int milliseconds);

    qint64 elapsed() const override { return elapsed_; }

protected:
    void start() override;

private:
    qint64 elapsed_ = 0;
};

} // namespace vorn::testing
