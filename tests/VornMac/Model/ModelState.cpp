#include "tests/VornMac/Model/ModelState.h"

#include <array>
#include <variant>

#include <fmt/format.h>

namespace vorn::testing {
namespace {

template <class Phase, std::size_t Count>
std::string textOfPhase(const Phase& value, const std::array<const char*, Count>& names)
{
    static_assert(Count == std::variant_size_v<Phase>);
    const std::string name = names.at(value.index());
    const auto* failed = std::get_if<phase::Failed>(&value);
    return failed != nullptr ? name + ": " + failed->text : name;
}

} // namespace

std::string textOf(const LinkPhase& phase)
{
    return textOfPhase(phase, std::array{"loading", "showing", "scanned", "rejected", "failed"});
}

std::string textOf(const ScanPhase& phase)
{
    return textOfPhase(phase,
                       std::array{"idle", "loading", "unavailable", "not configured", "not found", "found", "failed"});
}

std::string textOf(const UploadPhase& phase)
{
    const auto* uploading = std::get_if<phase::Uploading>(&phase);
    if (uploading != nullptr) return fmt::format("uploading {}", uploading->fraction);
    return textOfPhase(phase, std::array{"idle", "preparing", "uploading", "finishing", "failed"});
}

std::string textOf(Step step)
{
    constexpr std::array names{"link", "consent", "access", "find", "upload", "done"};
    return names.at(static_cast<std::size_t>(step));
}

ModelState ModelState::of(const AppModel& model)
{
    return {
        .step = model.step(),
        .generation = model.sessionGeneration(),
        .session = model.session(),
        .linkPhase = model.linkPhase(),
        .qrPayload = model.qrPayload(),
        .linkExpiresAt = model.linkExpiresAt(),
        .understandsUpload = model.understandsUpload(),
        .agreesToShare = model.agreesToShare(),
        .access = model.access(),
        .scanPhase = model.scanPhase(),
        .nimbrel = model.nimbrel(),
        .exportResult = model.exportResult(),
        .uploadPhase = model.uploadPhase(),
        .submission = model.submission(),
    };
}

ModelState ModelState::afterSessionEnd() const
{
    ModelState after = *this;
    after.step = Step::link;
    ++after.generation;
    after.session.reset();
    after.linkPhase = phase::Loading{};
    after.qrPayload.reset();
    after.linkExpiresAt.reset();
    after.understandsUpload = after.agreesToShare = false;
    after.scanPhase = phase::Idle{};
    after.nimbrel.reset();
    after.exportResult.reset();
    after.uploadPhase = phase::Idle{};
    after.submission.reset();
    return after;
}

void PrintTo(const ModelState& state, std::ostream* out)
{
    constexpr std::array access{"granted", "denied", "no database"};
    *out << fmt::format("\n  step {}, generation {}, user {}\n", textOf(state.step), state.generation,
                        state.session ? state.session->userId + " with " + state.session->token : "(none)");
    *out << fmt::format("  link {}, payload {}, {}\n", textOf(state.linkPhase), state.qrPayload.value_or("(none)"),
                        state.linkExpiresAt ? internetDateTime(*state.linkExpiresAt) : "(no end)");
    *out << fmt::format("  boxes {} {}, access {}\n", state.understandsUpload, state.agreesToShare,
                        access.at(static_cast<std::size_t>(state.access)));
    *out << fmt::format("  scan {}, quest {}, export {}\n", textOf(state.scanPhase),
                        state.nimbrel ? state.nimbrel->quest.id + " " + state.nimbrel->quest.status : "(none)",
                        static_cast<const void*>(state.exportResult.get()));
    *out << fmt::format("  upload {}, submission {}\n", textOf(state.uploadPhase),
                        state.submission ? state.submission->id + " " + state.submission->status.word() : "(none)");
}

} // namespace vorn::testing
