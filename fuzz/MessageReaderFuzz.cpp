#include "NimbrelExportKit/Messages/MessageReader.h"
#include "NimbrelExportKit/Messages/NimbrelChatLocator.h"
#include "Platform/Base/FileManager.h"
#include "Platform/Base/Text.h"
#include "fuzz/Require.h"

#include <cstdint>

#include <unistd.h>

namespace vorn {
namespace {

/// How often a read may ask whether to stop: over a damaged file a query may loop for a long time.
constexpr int patience = 50;

void requireOrder(const MessageList& messages)
{
    for (std::size_t i = 1; i < messages.size(); ++i) {
        require(messages[i - 1].sentAt <= messages[i].sentAt, "messages are ordered by time");
    }
}

void requireWellFormed(const ExportedMessage& message)
{
    require(text::isWellFormed(message.text), "texts are well-formed");
    require(text::isWellFormed(message.guid), "guids are well-formed");
    require(!message.service || text::isWellFormed(*message.service), "services are well-formed");
    require(!message.text.empty() || !message.attachments.empty(), "no message is empty");
    require(text::trimmed(message.text) == message.text.view(), "texts are trimmed");
}

/// Reads as the export does: a damaged database must give an error or sound records.
void readDatabase(const std::string& path)
{
    SQLiteDatabase database(path, SQLiteDatabase::Mode::queryOnly);
    database.execute("PRAGMA temp_store = MEMORY");
    int asked = 0;
    database.stopWhen([&asked] { return ++asked > patience; });
    const auto chats = NimbrelChatLocator::locate(database, {"+15550102030", "assistant@example.com"});
    const auto output = MessageReader::read(chats, database);
    requireOrder(output.messages);
    for (const ExportedMessage& message : output.messages) requireWellFormed(message);
}

} // namespace
} // namespace vorn

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    vorn::FileManager& files = vorn::FileManager::standard();
    static const auto path = files.temporaryDirectory() / ("vorn-fuzz-" + std::to_string(getpid()) + ".db");
    files.writeAtomically(std::as_bytes(std::span(data, size)), path);
    try {
        vorn::readDatabase(path.string());
    } catch (const vorn::SQLiteError&) { // NOLINT(bugprone-empty-catch): the clear error that damage may give
    }
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) files.remove(path.string() + suffix);
    return 0;
}
