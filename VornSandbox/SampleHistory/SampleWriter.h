#pragma once

#include "VornSandbox/SampleHistory/SampleCast.h"
#include "VornSandbox/SampleHistory/SampleDatabase.h"
#include "VornSandbox/SampleHistory/SampleMessage.h"

#include <cstdint>

namespace vorn {

/// Puts handles, chats and messages into the tables of a sample history. Threads and errors as `SampleDatabase`.
class SampleWriter {
public:
    SampleWriter(SampleDatabase& database, const SampleCast& cast);

    void writeCast();

    void write(const SampleMessage& message);

private:
    void writeMessage(const SampleMessage& message);
    void writeAttachment(const SampleMessage& message, const SampleAttachment& attachment);

    SampleDatabase& database_;
    const SampleCast& cast_;
    SampleStatement message_;
    SampleStatement chatMessage_;
    SampleStatement attachment_;
    SampleStatement messageAttachment_;
    std::int64_t attachments_ = 0;
};

} // namespace vorn
