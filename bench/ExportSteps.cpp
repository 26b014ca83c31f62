// One step of an export, to be measured as a process of its own: its CPU time and its peak memory are the step's.
// Usage: bench-steps records DB HANDLE… | archive DB OUT.zip HANDLE… | copy FROM TO | idle
#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "NimbrelExportKit/Messages/MessageReader.h"
#include "NimbrelExportKit/Messages/NimbrelChatLocator.h"
#include "NimbrelExportKit/Messages/NimbrelExporter.h"
#include "Platform/Base/Bundle.h"

#include <cstdio>
#include <cstdlib>

namespace {

using namespace vorn;
using Arguments = std::vector<std::string>;

Arguments from(const Arguments& arguments, std::size_t first)
{
    return {arguments.begin() + static_cast<std::ptrdiff_t>(first), arguments.end()};
}

/// Database to records, without the copy. The records are not freed, as the limit frees nothing either.
void records(const Arguments& arguments)
{
    SQLiteDatabase database(arguments.at(1), SQLiteDatabase::Mode::queryOnly);
    database.execute("PRAGMA temp_store = MEMORY");
    const auto chats = NimbrelChatLocator::locate(database, from(arguments, 2));
    const auto output = MessageReader::read(chats, database);
    std::printf("%zu messages\n", output.messages.size());
    std::fflush(stdout);
    std::_Exit(0);
}

/// Database to archive, whole: copy, records, documents, deflate, read back, write.
void archive(const Arguments& arguments)
{
    const auto result = NimbrelExporter(arguments.at(1), NimbrelExporter::usualAttempts).export_(from(arguments, 3));
    const auto file = NimbrelArchiveBuilder::writeArchive(result, ExporterInfo::current(Bundle(Bundle::Values())),
                                                          arguments.at(2), Instant());
    std::printf("%zu messages, %lld bytes\n", result.messages.size(), static_cast<long long>(file.sizeBytes));
}

} // namespace

int main(int argc, char** argv)
{
    const Arguments arguments(argv + 1, argv + argc);
    const std::string step = arguments.empty() ? "" : arguments.front();
    if (step == "records")
        records(arguments);
    else if (step == "archive")
        archive(arguments);
    else if (step == "copy")
        FileManager::standard().copyFile(arguments.at(1), arguments.at(2), {});
    else if (step != "idle")
        return 2;
    return 0;
}
