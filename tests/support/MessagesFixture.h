#pragma once

#include "Platform/SQLite/SQLiteDatabase.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vorn::testing {

/// How a test's Messages database differs from a current one.
struct MessagesSchema {
    std::set<std::string> without = {}; ///< columns left out, as "message.service"
    bool shuffled = false;              ///< columns in another order
    bool extraColumns = false;          ///< columns that the export does not know
    bool upperCase = false;             ///< column names in capitals
    bool attachmentTables = true;
    bool indexes = true;
};

/// A row of the table message. The defaults make a row that the export keeps.
struct MessageRow {
    std::optional<std::int64_t> rowID = std::nullopt; ///< the next one
    std::optional<std::string> guid = std::nullopt;   ///< "guid-" and the row's number
    SQLiteValue text = std::string("Hello");
    SQLiteValue attributedBody = nullptr;
    SQLiteValue isFromMe = std::int64_t{0};
    SQLiteValue date = std::int64_t{700'000'000'000'000'000};
    SQLiteValue service = std::string("iMessage");
    SQLiteValue associatedMessageType = std::int64_t{0};
    SQLiteValue itemType = std::int64_t{0};
    SQLiteValue dateRetracted = std::int64_t{0};
    SQLiteValue dateEdited = std::int64_t{0};
    SQLiteValue threadOriginatorGuid = nullptr;
    std::vector<std::int64_t> chats = {1};
};

/// The shortest attributed body that the decoder accepts, of a text below 128 bytes.
ByteBuffer attributedBody(const std::string& text);

/// A real Messages database in WAL mode that a test fills row by row. While the fixture lives, only `checkpoint` moves
/// anything from the log into the main file, as on an idle Mac.
class MessagesFixture {
public:
    using Values = std::vector<std::pair<std::string, SQLiteValue>>;

    static constexpr const char* assistant = "+15550102030";

    explicit MessagesFixture(const std::filesystem::path& path, MessagesSchema schema = {});

    /// Inserts a row; values of columns that the schema leaves out are ignored.
    void insert(const std::string& table, const Values& values);

    void handle(std::int64_t rowID, SQLiteValue id, const std::string& service = "iMessage");
    void chat(std::int64_t rowID, SQLiteValue guid, const std::vector<std::int64_t>& handles, std::int64_t style = 45,
              SQLiteValue service = std::string("iMessage"));
    /// Chat 1, "iMessage;-;+15550102030", with handle 1.
    void assistantChat();

    std::int64_t message(const MessageRow& row = {}); ///< returns the row's ROWID
    /// Inserts `count` rows like `row` at intervals of `apart` nanoseconds; after the first, every third is the user's.
    /// Faster than one by one. Needs a schema with every column.
    void messages(std::int64_t count, std::int64_t apart, const MessageRow& row = {});
    void attachment(std::int64_t message, SQLiteValue mimeType, SQLiteValue typeIdentifier);

    /// Moves every row from the log into the main file.
    void checkpoint();

    const SQLiteDatabase& database() const { return database_; }
    const std::filesystem::path& path() const { return path_; }

private:
    void createTable(const std::string& name, std::vector<std::string> columns, const std::string& constraints = "");

    std::filesystem::path path_;
    MessagesSchema schema_;
    SQLiteDatabase database_;
    std::int64_t lastMessage_ = 0;
    std::int64_t lastAttachment_ = 0;
};

} // namespace vorn::testing
