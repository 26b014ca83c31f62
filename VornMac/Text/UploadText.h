#pragma once

#include "VornMac/Text/Phases.h"
#include "VornMac/Text/RewardStatus.h"
#include "VornMac/Text/ScreenText.h"
#include "VornMacCore/Client/UploadProgress.h"

#include <chrono>
#include <optional>
#include <string>

/// The upload screen. Threads: any.
namespace vorn {

ScreenText uploadText(const UploadPhase& phase);

inline constexpr const char* archiveName = "vorn-nimbrel-export.zip"; ///< what the bar is called

/// How the bar of an upload stands. A value.
struct UploadBar {
    double value = 0;        ///< 0…1
    bool isMeasured = false; ///< how much is done is known
    bool isBusy = false;     ///< something is done, and nobody knows how much of it
    bool operator==(const UploadBar&) const = default;

    bool isMoving() const { return isMeasured && value < 1; }
};
UploadBar uploadBar(const UploadPhase& phase);

/// How the reward stands while its upload goes on.
RewardStatus rewardStatus(const UploadPhase& phase);

/// `fraction`, 0…1, in whole percents, rounded down: 100 is said when all is done.
int wholePercents(double fraction);
std::string percentText(double fraction);  ///< "42 percent", for a screen reader
std::string percentLabel(double fraction); ///< "42 %"

/// What stands under the bar: "3.4 of 8.1 MB, about 2 minutes left", without a time where none is known. Empty while
/// nothing is measured.
std::string uploadAmounts(const UploadBar& bar, const UploadProgress& progress,
                          std::optional<std::chrono::seconds> timeLeft);

} // namespace vorn
