#pragma once

#include "VornSandbox/SampleHistory/SampleCast.h"
#include "VornSandbox/SampleHistory/SampleInsert.h"
#include "VornSandbox/SampleHistory/SampleMessage.h"

#include <cstdint>

namespace vorn {

/// Puts handles, chats and messages into the tables of a sample history. Threads and errors as
/// `SQLiteDatabase`.
class SampleWriter {
public:
    SampleWriter(const SQLiteDatabase& database, const SampleCast& cast) : database_(database), cast_(cast) {}

    void writeCast();

    void write(const SampleMessage& message);

private:
    void writeMessage(const SampleMessage& message);
    void writeAttachment(const SampleMessage& message, const SampleAttachment& attachment);

    const SQLiteDatabase& database_;
    const SampleCast& cast_;
    SampleInsert message_{database_, "message"};
    SampleInsert chatMessage_{database_, "chat_message_join"};
    SampleInsert attachment_{database_, "attachment"};
    SampleInsert messageAttachment_{database_, "message_attachment_join"};
    std::int64_t attachments_ = 0;
};

} // namespace vorn
