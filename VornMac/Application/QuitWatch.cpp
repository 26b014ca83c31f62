#include "VornMac/Application/QuitWatch.h"

#include <utility>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr auto longestQuit = 5s;

} // namespace

QuitWatch::QuitWatch() : watch_(InterruptWatch::Deadline{[this] { onSignal(); }, longestQuit, ""})
{
}

void QuitWatch::onSignal()
{
    const std::lock_guard lock(mutex_);
    signalled_ = true;
    if (delivery_ != nullptr) delivery_->deliver();
}

QuitWatch::Delivery::Delivery(QuitWatch& watch, MainContext& context, std::function<void()> onQuit)
    : watch_(watch), context_(context), onQuit_(std::move(onQuit))
{
    const std::lock_guard lock(watch_.mutex_);
    watch_.delivery_ = this;
    if (watch_.signalled_) deliver();
}

QuitWatch::Delivery::~Delivery()
{
    const std::lock_guard lock(watch_.mutex_);
    watch_.delivery_ = nullptr;
}

} // namespace vorn
