#include "VornSandbox/Service/ServiceOptions.h"

#include "Platform/Base/PrintableText.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>

namespace vorn::sandbox {
namespace {

constexpr const char* program = "vorn-sandbox";
constexpr const char* description = "Runs the service on this computer alone, with a page that plays the phone.";
constexpr int wrongCommandLine = 2;
constexpr double longestSeconds = 10.0 * 365 * 24 * 3600;
constexpr std::int64_t largestArchive = std::int64_t{1} << 50;

constexpr double largestReward = 1e6;
constexpr std::int64_t longestPollInterval = 3'600'000;

/// A number within these bounds, both included. CLI11's own check lets "nan" through.
CLI::Validator within(double least, double most)
{
    return {[=](const std::string& text) {
                double value = 0;
                const bool fits = CLI::detail::lexical_cast(text, value) && value >= least && value <= most;
                return fits ? std::string()
                            : fmt::format("\"{}\" is not a number from {} to {}", printable(text), least, most);
            },
            ""};
}

CLI::Validator wholeWithin(std::int64_t least, std::int64_t most)
{
    return {[=](const std::string& text) {
                const auto value = wholeNumber(text);
                const bool fits = value && *value >= least && *value <= most;
                return fits ? std::string()
                            : fmt::format("\"{}\" is not a whole number from {} to {}", printable(text), least, most);
            },
            ""};
}

CLI::Validator notEmpty()
{
    return {[](const std::string& text) { return text.empty() ? "it is empty" : std::string(); }, ""};
}

/// Options that are read as text first.
struct Texts {
    std::string review = "approved";
    std::vector<std::string> faults;
    std::string state;
};

void addSeconds(CLI::App& app, const std::string& name, Settings::Duration& target, const std::string& help)
{
    const double seconds = std::chrono::duration<double>(target).count();
    app.add_option_function<double>(
           name,
           [&target](double value) {
               target = std::chrono::milliseconds(static_cast<std::int64_t>(std::round(value * 1000)));
           },
           help + fmt::format(" [{}]", seconds))
        ->check(within(0, longestSeconds))
        ->type_name("SECONDS");
}

constexpr auto effects = R"(Effects of faults:
  200 to 599  answers with that HTTP status
  drop        closes the connection without an answer
  hang        takes the request and never answers
  slow        answers as usual, but three seconds later
  garbage     answers 200 with something that is not JSON
  truncate    announces a longer body than it sends
  no-asset    opens the submission, but answers without its asset (create-submission)
  bad-url     the first part URL leads to a file (create-submission, part-urls)

The exit status is 0 when the service was stopped, 1 when it could not start, 2 for a wrong command line.)";

void addAccount(CLI::App& app, Settings& settings)
{
    app.add_option("--user", settings.users, "Name of an account; may be repeated")
        ->check(notEmpty())
        ->allow_extra_args(false)
        ->capture_default_str();
    app.add_option("--handle", settings.handles, "A handle of the assistant; may be repeated")
        ->allow_extra_args(false)
        ->capture_default_str();
    app.add_option("--reward", settings.rewardUsd, "Dollars for an approved upload")
        ->check(within(0, largestReward))
        ->capture_default_str();
    app.add_flag("--auto-approve", settings.autoApprove, "The phone scans and confirms every link by itself");
    addSeconds(app, "--link-lifetime", settings.linkLifetime, "Seconds until a code expires");
    addSeconds(app, "--token-lifetime", settings.tokenLifetime, "Seconds until an access token expires");
    app.add_option("--poll-interval", settings.pollIntervalMs, "Milliseconds between polls, as told to the Mac")
        ->check(wholeWithin(0, longestPollInterval))
        ->capture_default_str();
}

void addUploads(CLI::App& app, Settings& settings)
{
    app.add_option("--max-bytes", settings.maxBytes, "The largest archive")
        ->check(wholeWithin(0, largestArchive))
        ->capture_default_str();
    app.add_option("--part-size", settings.partSize, "Bytes of a part")
        ->check(wholeWithin(1, largestArchive))
        ->capture_default_str();
    app.add_option("--initial-parts", settings.initialParts, "Part URLs that come with a new submission")
        ->check(wholeWithin(0, 10'000))
        ->capture_default_str();
    addSeconds(app, "--expire-urls", settings.urlLifetime, "Seconds until a part URL expires");
    app.add_flag("--expired-first-urls", settings.expiredFirstUrls,
                 "The first URL of each part has expired already, so that a fresh one must be asked for");
}

void addReview(CLI::App& app, Settings& settings, Texts& texts)
{
    app.add_option("--review", texts.review,
                   "How reviews end: approved, rejected:REASON, expired, checked (reads the archive) or manual (the"
                   " page's buttons)")
        ->capture_default_str();
    addSeconds(app, "--delay", settings.reviewStep, "Seconds that each of a review's two steps lasts");
    addSeconds(app, "--cooldown", settings.cooldown, "Seconds from an approval to the next possible upload");
}

void addOptions(CLI::App& app, ServiceOptions& options, Texts& texts)
{
    app.add_option("--port", options.port, "The port on 127.0.0.1; 0 takes any free one")
        ->check(wholeWithin(0, 65535))
        ->capture_default_str();
    addAccount(app, options.settings);
    addUploads(app, options.settings);
    addReview(app, options.settings, texts);
    app.add_option("--fault", texts.faults,
                   fmt::format("OPERATION=EFFECT[xN][@K]: goes wrong N times from the K-th request on; may be repeated."
                               " OPERATION is {}; EFFECT is listed below",
                               fmt::join(operations, ", ")))
        ->allow_extra_args(false);
    app.add_option("--state", texts.state, "Keeps everything in this folder; without it, all is gone at the end")
        ->check(notEmpty())
        ->type_name("FOLDER");
    app.footer(effects);
    app.set_version_flag("--version", "vorn-sandbox " VORN_VERSION);
}

void take(const Texts& texts, ServiceOptions& options)
{
    const auto review = ReviewPlan::parse(texts.review);
    if (!review) throw CLI::ValidationError("--review", "not a review's end: " + texts.review);
    options.settings.review = *review;
    for (const std::string& text : texts.faults) {
        const auto fault = Fault::parse(text);
        if (!fault) throw CLI::ValidationError("--fault", "not a fault: " + text);
        options.faults.push_back(*fault);
    }
    if (!texts.state.empty()) options.state = texts.state;
}

/// Reasons are keys, such as "export_too_small". Unknown ones are fine: the client must tolerate them.
bool isKey(std::string_view text)
{
    return !text.empty() && text.size() <= 64 && std::ranges::all_of(text, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
    });
}

/// Whether a review can end with `outcome`: a known status, and a reason if and only if it is a rejection.
bool isValid(const Outcome& outcome)
{
    if (outcome.status == "rejected") return isKey(outcome.reason);
    return (outcome.status == "approved" || outcome.status == "expired") && outcome.reason.empty();
}

} // namespace

std::optional<ReviewPlan> ReviewPlan::parse(std::string_view text)
{
    if (text == "manual") return ReviewPlan{.kind = Kind::manual};
    if (text == "checked") return ReviewPlan{.kind = Kind::checked};
    const auto colon = text.find(':');
    Outcome outcome{.status = std::string(text.substr(0, colon)), .reason = {}};
    if (colon != std::string_view::npos) outcome.reason = text.substr(colon + 1);
    if (!isValid(outcome) || (outcome.reason.empty() && colon != std::string_view::npos)) return std::nullopt;
    return ReviewPlan{.kind = Kind::fixed, .outcome = std::move(outcome)};
}

std::optional<int> ServiceOptions::parse(int argc, const char* const* argv, ServiceOptions& options)
{
    CLI::App app{description, program};
    Texts texts;
    addOptions(app, options, texts);
    try {
        app.parse(argc, argv);
        take(texts, options);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : wrongCommandLine;
    }
    return std::nullopt;
}

void ServiceOptions::describe(const std::function<void(const CLI::App&)>& read)
{
    CLI::App app{description, program};
    ServiceOptions options;
    Texts texts;
    addOptions(app, options, texts);
    read(app);
}

} // namespace vorn::sandbox
