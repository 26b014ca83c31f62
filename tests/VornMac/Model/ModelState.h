#pragma once

#include "VornMac/Model/AppModel.h"

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

namespace vorn::testing {

/// Everything that screens see of a model, for comparing it as a whole.
struct ModelState {
    Step step;
    std::int64_t generation;
    std::optional<StoredSession> session;
    LinkPhase linkPhase;
    std::optional<std::string> qrPayload;
    std::optional<Instant> linkExpiresAt;
    bool understandsUpload;
    bool agreesToShare;
    FullDiskAccessStatus access;
    ScanPhase scanPhase;
    std::optional<NimbrelState> nimbrel;
    AppModel::ExportResult exportResult;
    UploadPhase uploadPhase;
    std::optional<SubmissionStatus> submission;

    static ModelState of(const AppModel& model);
    bool operator==(const ModelState&) const = default;

    /// The state that remains when the session ends.
    ModelState afterSessionEnd() const;
};

// For messages: "uploading 0.5", "failed: Try later."
std::string textOf(const LinkPhase& phase);
std::string textOf(const ScanPhase& phase);
std::string textOf(const UploadPhase& phase);
std::string textOf(Step step);

void PrintTo(const ModelState& state, std::ostream* out); // NOLINT(readability-identifier-naming): GoogleTest's

} // namespace vorn::testing
