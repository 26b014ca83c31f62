// Every call to the system and to SQLite fails once. The result must be either the right error or the same archive, and
// nothing may be left in the temporary directory.
#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "NimbrelExportKit/Messages/NimbrelExporter.h"
#include "Platform/Base/Bundle.h"
#include "tests/NimbrelExportKit/Faults/FaultInjection.h"
#include "tests/support/MessagesFixture.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <variant>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using ::testing::IsEmpty;
using testing::MessagesFixture;
using testing::readFile;

/// The result of an export and its archive.
struct Finished {
    std::string archive;
};
struct ReadingFailed {
    NimbrelExportError error;
};
struct CopyFailed {
    std::error_code code;
};
struct WritingFailed {
    std::error_code code;
};
using Outcome = std::variant<Finished, ReadingFailed, CopyFailed, WritingFailed>;

class ExportFaults : public ::testing::Test {
protected:
    testing::TemporaryFolder home, temporary, target;
    testing::ScopedEnvironment environment{"TMPDIR", temporary.path().string()};
    MessagesFixture fixture{home / "chat.db"};
    const fs::path output = target / "out.zip";

    ExportFaults()
    {
        fixture.assistantChat();
        for (int i = 0; i < 40; ++i) fixture.message({.text = "Message " + std::to_string(i) + std::string(200, 'x')});
        fixture.attachment(1, nullptr, "public.jpeg"s);
        fixture.checkpoint();
        fixture.message({.text = "only in the log"s});
    }

    Outcome exportOnce()
    {
        NimbrelExportResult result;
        try {
            result =
                NimbrelExporter(home / "chat.db", NimbrelExporter::usualAttempts).export_({MessagesFixture::assistant});
        } catch (const NimbrelExportError& error) {
            return ReadingFailed{error};
        } catch (const fs::filesystem_error& error) {
            return CopyFailed{error.code()};
        }
        try {
            NimbrelArchiveBuilder::writeArchive(result, ExporterInfo::current(Bundle(Bundle::Values())), output,
                                                Instant());
        } catch (const fs::filesystem_error& error) {
            return WritingFailed{error.code()};
        }
        return Finished{};
    }

    struct Played {
        Outcome outcome;
        int calls;
    };

    Played play(int failAt, int code, const char* only = nullptr)
    {
        testing::writeFile(output, "old"); // replaced in one step, or kept
        faultsArm(failAt, code, only);
        Outcome outcome = exportOnce();
        const int calls = faultsDisarm();
        if (auto* finished = std::get_if<Finished>(&outcome)) {
            finished->archive = readFile(output);
        } else if (!std::holds_alternative<WritingFailed>(outcome)) { // may be written, and only its size unreadable
            EXPECT_EQ(readFile(output), "old");
        }
        return {std::move(outcome), calls};
    }

    struct Call {
        std::string name;
        bool inSQLite;
    };

    /// The calls of an export in which nothing fails.
    std::vector<Call> soundCalls()
    {
        std::vector<Call> calls;
        const int count = play(-1, 0).calls;
        for (int call = 0; call < count; ++call) calls.push_back({faultsName(call), faultsWasInSQLite(call) != 0});
        return calls;
    }

    /// Holds after every export, however it ended.
    void expectNothingLeft(const std::string& what)
    {
        EXPECT_THAT(temporary.names(), IsEmpty()) << what;
        for (const std::string& name : target.names()) EXPECT_EQ(name, "out.zip") << what;
    }
};

std::string describe(const std::string& name, int call, int code)
{
    return "call " + std::to_string(call) + ", " + name + ", failed with " + std::to_string(code);
}

bool isSQLiteCall(const std::string& name)
{
    return name.starts_with("sqlite3_");
}

SQLiteError::Stage stageOf(const std::string& name)
{
    if (name == "sqlite3_open_v2") return SQLiteError::Stage::open;
    if (name == "sqlite3_exec") return SQLiteError::Stage::execute;
    if (name == "sqlite3_prepare_v2") return SQLiteError::Stage::prepare;
    if (name == "sqlite3_bind_int64") return SQLiteError::Stage::bind;
    return SQLiteError::Stage::step;
}

TEST_F(ExportFaults, EveryCallToSQLiteFailsWithItsStage)
{
    const auto calls = soundCalls();
    int failed = 0;
    for (int call = 0; call < static_cast<int>(calls.size()); ++call) {
        const auto& [name, inSQLite] = calls[static_cast<std::size_t>(call)];
        if (!isSQLiteCall(name) || inSQLite) continue;
        const auto outcome = play(call, 0).outcome;
        const std::string what = describe(name, call, 13);
        ASSERT_TRUE(std::holds_alternative<ReadingFailed>(outcome)) << what;
        const auto& reason = std::get<ReadingFailed>(outcome).error.reason();
        ASSERT_TRUE(std::holds_alternative<NimbrelExportError::Database>(reason)) << what;
        const SQLiteError& error = std::get<NimbrelExportError::Database>(reason).error;
        EXPECT_EQ(error.stage(), stageOf(name)) << what;
        EXPECT_EQ(error.code(), 13) << what;
        if (name == "sqlite3_open_v2") EXPECT_EQ(error.message(), "cannot open"); // no handle to ask for a message
        if (name == "sqlite3_exec") EXPECT_EQ(error.message(), "exec failed");
        expectNothingLeft(what);
        ++failed;
    }
    EXPECT_GT(failed, 50);
}

TEST_F(ExportFaults, EveryCallToTheSystemFailsClearlyOrWithoutHarm)
{
    const std::string sound = std::get<Finished>(play(-1, 0).outcome).archive;
    const auto calls = soundCalls();
    std::map<std::string, int> failures;
    for (const int code : {EIO, ENOSPC}) {
        for (int call = 0; call < static_cast<int>(calls.size()); ++call) {
            const auto& [name, inSQLite] = calls[static_cast<std::size_t>(call)];
            if (isSQLiteCall(name)) continue;
            const std::string what = describe(name, call, code);
            const Outcome outcome = play(call, code).outcome;
            expectNothingLeft(what);
            if (const auto* finished = std::get_if<Finished>(&outcome)) {
                EXPECT_EQ(finished->archive, sound) << what;
                continue;
            }
            ++failures[name];
            if (const auto* failed = std::get_if<CopyFailed>(&outcome)) {
                EXPECT_FALSE(inSQLite) << what;
                EXPECT_EQ(failed->code.value(), code) << what;
            } else if (const auto* writing = std::get_if<WritingFailed>(&outcome)) {
                EXPECT_FALSE(inSQLite) << what;
                EXPECT_EQ(writing->code.value(), code) << what;
            } else if (inSQLite) {
                const auto& error = std::get<ReadingFailed>(outcome).error;
                EXPECT_TRUE(error.is<NimbrelExportError::Database>() ||
                            error.is<NimbrelExportError::SnapshotUnreadable>())
                    << what;
            } else {
                EXPECT_EQ(call, 0) << what; // the probe: refuses a database that does not open
                EXPECT_TRUE(std::get<ReadingFailed>(outcome).error.is<NimbrelExportError::AccessDenied>()) << what;
            }
        }
    }
    for (const char* name : {"open", "mkdir", "copy_file_range", "write", "rename", "close", "pread64"}) {
        EXPECT_GT(failures[name], 0) << name << " never failed the export";
    }
}

TEST_F(ExportFaults, ARefusedCopyIsDeniedAccess)
{
    for (const int code : {EACCES, EPERM}) {
        const Outcome outcome = play(1, code, "open").outcome; // after the probe
        ASSERT_TRUE(std::holds_alternative<ReadingFailed>(outcome));
        EXPECT_TRUE(std::get<ReadingFailed>(outcome).error.is<NimbrelExportError::AccessDenied>());
        expectNothingLeft("refused copy");
    }
}

TEST_F(ExportFaults, ALogThatCannotBeLookedAtIsCopiedAllTheSame)
{
    const std::string sound = std::get<Finished>(play(-1, 0).outcome).archive;
    ASSERT_GT(play(-1, 0, "stat").calls, 1);
    for (const int code : {EACCES, EIO}) {
        const Outcome outcome = play(1, code, "stat").outcome; // after the temporary directory
        ASSERT_TRUE(std::holds_alternative<Finished>(outcome)) << code;
        EXPECT_EQ(std::get<Finished>(outcome).archive, sound) << code;
    }
}

TEST_F(ExportFaults, InterruptedCallsAreTakenUpAgain)
{
    const std::string sound = std::get<Finished>(play(-1, 0).outcome).archive;
    for (const char* name : {"read", "write", "copy_file_range", "pread64"}) {
        const int calls = play(-1, 0, name).calls;
        for (int call = 0; call < calls; ++call) {
            const Outcome outcome = play(call, EINTR, name).outcome;
            ASSERT_TRUE(std::holds_alternative<Finished>(outcome)) << describe(name, call, EINTR);
            EXPECT_EQ(std::get<Finished>(outcome).archive, sound) << describe(name, call, EINTR);
        }
    }
}

TEST_F(ExportFaults, ACopyThatTheKernelCannotMakeGoesThroughMemory)
{
    const std::string sound = std::get<Finished>(play(-1, 0).outcome).archive;
    for (const int code : {EXDEV, EINVAL, ENOSYS, EOPNOTSUPP}) {
        const Outcome outcome = play(0, code, "copy_file_range").outcome;
        ASSERT_TRUE(std::holds_alternative<Finished>(outcome)) << code;
        EXPECT_EQ(std::get<Finished>(outcome).archive, sound) << code;
    }
}

} // namespace
} // namespace vorn
