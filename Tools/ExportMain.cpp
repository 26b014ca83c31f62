#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "NimbrelExportKit/Messages/NimbrelExporter.h"
#include "NimbrelExportKit/Messages/TemporaryItems.h"
#include "NimbrelExportKit/Messages/UsersDatabase.h"
#include "Platform/Base/InterruptWatch.h"
#include "Platform/Base/Memory.h"
#include "Platform/Base/SHA256.h"
#include "Tools/Export/ExportFailure.h"
#include "Tools/Export/ExportOptions.h"
#include "Tools/Export/ExportStatistics.h"
#include "Tools/Support/Preflight.h"
#include "Tools/Support/ProgressLine.h"
#include "VornMac/Text/ErrorText.h"
#include "VornMacCore/Wire/Application.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <optional>

#include <fmt/format.h>
#include <unistd.h>

namespace vorn {
namespace {

constexpr const char* stopped = "Stopped. Nothing was written.\n";

/// Ends the export with `failure`.
struct Failed {
    ExportFailure failure;
};

/// Lets a signal end the program while the archive is packed: packing happens in memory and cannot be cancelled.
class ArchiveFiles : public FileManager {
public:
    ArchiveFiles(InterruptWatch& interrupts, const std::string& lastWords)
        : interrupts_(interrupts), packing_(std::in_place, interrupts, lastWords)
    {
        interrupts_.cancelFlag().check(); // a signal that arrived earlier does not end it
    }

    void writeAtomically(ByteView bytes, const std::filesystem::path& path) override
    {
        packing_.reset();
        interrupts_.cancelFlag().check();
        FileManager::writeAtomically(bytes, path);
    }

private:
    const InterruptWatch& interrupts_;
    std::optional<InterruptWatch::NothingOnDisk> packing_;
};

class ExportCommand {
public:
    ExportCommand(const ExportOptions& options, InterruptWatch& interrupts, FileManager& temporaryFiles)
        : options_(options), interrupts_(interrupts), temporaryFiles_(temporaryFiles), progress_(terminalForProgress())
    {
    }

    void run()
    {
        refuseMissingDatabase();
        refuseUnwritableOutput();
        const NimbrelExportResult result = read();
        if (const auto nothing = failureOfFinding(result); nothing && !options_.allowEmpty) fail(*nothing);
        const ArchiveFile archive = write(result);
        const ExportStatistics statistics{result.stats(), result.skipped, archive, hashOf(archive)};
        progress_.clear();
        print(options_.json ? jsonOf(statistics) : textOf(statistics));
    }

private:
    [[noreturn]] void fail(const ExportFailure& failure)
    {
        progress_.clear();
        throw Failed{failure};
    }

    /// More precise than the application's text, which assumes the user's own database on a Mac.
    void refuseMissingDatabase() const
    {
        using preflight::DatabaseFile;
        if (options_.database.empty()) throw Failed{{ExportStatus::noDatabase, errorText(NoHomeFolder()).text}};
        const DatabaseFile file = preflight::databaseFileAt(options_.database);
        if (file == DatabaseFile::plausible) return;
        const bool isMissing = file == DatabaseFile::missing;
        const std::string setUp = isMissing && options_.isUsersOwn
                                      ? errorText(NimbrelExportError(NimbrelExportError::NoDatabase{})).text + " "
                                      : "";
        throw Failed{{isMissing ? ExportStatus::noDatabase : ExportStatus::unreadable,
                      setUp + preflight::textOf(file, options_.database)}};
    }

    /// Fails early if the output is unwritable: reading takes a while.
    void refuseUnwritableOutput() const
    {
        const std::filesystem::path folder = options_.output.has_parent_path() ? options_.output.parent_path() : ".";
        int code = access(folder.c_str(), W_OK | X_OK) == 0 ? 0 : errno;
        std::error_code statusFailure;
        const auto type = std::filesystem::status(options_.output, statusFailure).type();
        if (code == 0 && type == std::filesystem::file_type::directory) code = EISDIR;
        if (code == 0 && type == std::filesystem::file_type::none) code = statusFailure.value();
        if (code == 0) return;
        const std::error_code reason(code, std::generic_category());
        throw Failed{failureOfWriting(std::filesystem::filesystem_error("", reason), options_.output)};
    }

    NimbrelExportResult read()
    {
        try {
            return NimbrelExporter(options_.database, NimbrelExporter::usualAttempts, temporaryFiles_)
                .export_(
                    options_.handles, [this](const ExportProgress& progress) { show(progress); },
                    interrupts_.cancelFlag());
        } catch (const Cancelled&) {
            throw;
        } catch (const std::exception& error) {
            throw Failed{failureOfReading(error)};
        }
    }

    ArchiveFile write(const NimbrelExportResult& result)
    {
        progress_.show("Packing the archive…");
        try {
            ArchiveFiles files(interrupts_, progress_.eraser() + stopped);
            return NimbrelArchiveBuilder::writeArchive(result, ExporterInfo::current(applicationBundle()),
                                                       options_.output, options_.exportedAt, files);
        } catch (const Cancelled&) {
            throw;
        } catch (const std::exception& error) {
            throw Failed{failureOfWriting(error, options_.output)};
        }
    }

    static std::string hashOf(const ArchiveFile& archive)
    {
        try {
            return SHA256::hexDigestOfFile(archive.url);
        } catch (const std::exception&) {
            throw Failed{statisticsLost()}; // the archive itself has been written
        }
    }

    static ExportFailure statisticsLost()
    {
        return {ExportStatus::statisticsLost, "The archive is written, but its statistics could not be printed."};
    }

    static void print(const std::string& text)
    {
        if (std::fputs(text.c_str(), stdout) != EOF && std::fflush(stdout) == 0) return;
        throw Failed{statisticsLost()};
    }

    void show(const ExportProgress& progress)
    {
        constexpr std::uint64_t megabyte = 1'000'000;
        progress_.show(progress.phase == ExportProgress::Phase::copying
                           ? fmt::format("Copying the Messages database: {} MB…", progress.done / megabyte)
                           : fmt::format("Reading messages: {}…", progress.done));
    }

    const ExportOptions& options_;
    InterruptWatch& interrupts_;
    FileManager& temporaryFiles_;
    ProgressLine progress_;
};

int runExport(const ExportOptions& options)
{
    InterruptWatch interrupts;
    if (const auto mistake = preflight::mistakeInTemporaryDirectory()) {
        std::fputs((*mistake + "\n").c_str(), stderr);
        return static_cast<int>(ExportStatus::copyFailed);
    }
    TemporaryItems items(FileManager::standard().temporaryDirectory(), Log(bundleIdentifier(), "files"));
    try {
        ExportCommand(options, interrupts, items.files()).run();
        return static_cast<int>(ExportStatus::done);
    } catch (const Failed& failed) {
        std::fputs((failed.failure.text + "\n").c_str(), stderr);
        return static_cast<int>(failed.failure.status);
    } catch (const Cancelled&) {
        std::fputs(stopped, stderr);
        return interrupts.exitStatus();
    } catch (const std::exception& error) {
        std::fputs(fmt::format("{}{}.\n", unexpectedProblem, error.what()).c_str(), stderr);
        return static_cast<int>(ExportStatus::failed);
    }
}

} // namespace
} // namespace vorn

int main(int argc, char** argv)
{
    vorn::memory::keepPrivate();
    const auto now = std::chrono::floor<vorn::Instant::duration>(std::chrono::system_clock::now());
    const auto parsed = vorn::parseExportOptions(argc, argv, now);
    if (const auto* options = std::get_if<vorn::ExportOptions>(&parsed)) return vorn::runExport(*options);
    const auto& end = std::get<vorn::ExportOptionsEnd>(parsed);
    std::fputs(end.text.c_str(), end.isMistake ? stderr : stdout);
    return static_cast<int>(end.isMistake ? vorn::ExportStatus::wrongArguments : vorn::ExportStatus::done);
}
