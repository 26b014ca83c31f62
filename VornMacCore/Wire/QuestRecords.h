#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vorn {

// The user's state in the quest to which exports are submitted. Received only; JSON keys are the fields' names.

/// One step of the quest's instructions.
struct ExportGuideStep {
    std::string key;
    std::string title;
    std::string body;
    std::optional<std::string> imageUrl;
    std::optional<std::string> linkUrl;
    std::optional<std::string> linkLabel;
    bool operator==(const ExportGuideStep&) const = default;
};

/// The quest's instructions.
struct ExportGuide {
    std::string provider;
    std::optional<std::string> providerName;
    std::optional<std::vector<ExportGuideStep>> steps;
    std::optional<std::string> uploadFrom;
    bool operator==(const ExportGuide&) const = default;
};

/// The quest as the service describes it. `QuestAvailability` interprets `status`, `rejectionReasonKey` and
/// `availableAt`.
struct QuestWire {
    std::string id;
    std::optional<std::string> title;
    std::optional<std::string> description;
    std::optional<double> rewardUsd; ///< dollars as a number; a submission's own `rewardUsd` is text
    std::string status;
    std::optional<std::string> rejectionReasonKey;
    std::optional<std::string> availableAt; ///< time stamp
    std::optional<ExportGuide> exportGuide;
    bool operator==(const QuestWire&) const = default;
};

/// The answer about the quest's state.
struct NimbrelState {
    QuestWire quest;
    std::vector<std::string> handles; ///< the assistant's phone numbers and e-mail addresses in Messages
    std::int64_t maxBytes = 0;        ///< the size limit of one export, in bytes
    bool operator==(const NimbrelState&) const = default;
};

} // namespace vorn
