#pragma once

#include "VornMac/Text/Phases.h"
#include "VornMac/Text/RewardStatus.h"
#include "VornMac/Text/ScreenText.h"
#include "VornMacCore/Client/UploadProgress.h"

#include <chrono>
#include <optional>
#include <string>

/// The texts of the upload screen. Threads: any.
namespace vorn {

ScreenText uploadText(const UploadPhase& phase);

inline constexpr const char* archiveName = "vorn-nimbrel-export.zip"; ///< the name of the bar, and of a saved copy

/// The state of an upload's bar. A value.
struct UploadBar {
    double value = 0;        ///< 0…1
    bool isMeasured = false; ///< whether it is known how much is done
    bool isBusy = false;     ///< work goes on, but its progress is unknown
    bool operator==(const UploadBar&) const = default;

    bool isMoving() const { return isMeasured && value < 1; }
};
UploadBar uploadBar(const UploadPhase& phase);

/// The state of the reward during its upload.
RewardStatus rewardStatus(const UploadPhase& phase);

/// `fraction`, 0…1, in whole percent, rounded down: 100 means that everything is done.
int wholePercents(double fraction);
std::string percentText(double fraction);  ///< "42 percent", for a screen reader
std::string percentLabel(double fraction); ///< "42 %"

/// The text under the bar: "3.4 of 8.1 MB, about 2 minutes left", without a time while none is known. Empty while
/// nothing is measured.
std::string uploadAmounts(const UploadBar& bar, const UploadProgress& progress,
                          std::optional<std::chrono::seconds> timeLeft);

} // namespace vorn
