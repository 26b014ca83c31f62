#include "Platform/Desktop/SystemPresence.h"

#include "Platform/Desktop/linux/BusNotifications.h"
#include "Platform/Desktop/linux/LauncherProgress.h"
#include "Platform/Desktop/linux/MessageBus.h"
#include "Platform/Desktop/linux/SleepInhibitor.h"

#include <utility>

namespace vorn {
namespace {

class BusPresence final : public DesktopPresence {
public:
    BusPresence(const ApplicationNames& names, std::function<void(const std::string&)> onClick)
        : notifications_(session_, names, std::move(onClick)), inhibitor_(system_, session_, names),
          progress_(session_, names.identifier)
    {
    }

    void askToNotify() override {} // these desktops require no permission
    void notify(const Notification& notification) override { notifications_.show(notification); }
    void withdrawNotification() override { notifications_.withdraw(); }
    void stayAwake(const std::string& reason) override { inhibitor_.hold(reason); }
    void allowSleep() override { inhibitor_.release(); }
    void showProgress(std::optional<int> percent) override { progress_.show(percent); }
    void playSound() override {} // a notification names its own sound

private:
    MessageBus system_{MessageBus::Kind::system};
    MessageBus session_{MessageBus::Kind::session};
    BusNotifications notifications_;
    SleepInhibitor inhibitor_;
    LauncherProgress progress_;
};

} // namespace

std::unique_ptr<DesktopPresence> systemPresence(const ApplicationNames& names,
                                                std::function<void(const std::string& activationToken)> onClick)
{
    return std::make_unique<BusPresence>(names, std::move(onClick));
}

} // namespace vorn
