#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <string>
#include <string_view>

namespace vorn::testing {

/// A connection to a port of this computer that says what it is told and no more. Reads wait for a minute at most:
/// longer than a test needs, shorter than a run that hangs.
class RawClient {
public:
    explicit RawClient(int port);

    void send(std::string_view text) const;
    /// Says that nothing more comes; answers can still be read.
    void finishSending() const;

    /// What comes until the other side ends.
    std::string readToEnd() const;
    /// What comes up to and with `mark`, perhaps more; all there is when the other side ends before.
    std::string readTo(std::string_view mark) const;

private:
    /// Appends what comes; false at the end.
    bool readSome(std::string& text) const;

    FileDescriptor socket_;
};

/// A request without a body, as a client of the service at `port` sends it; `headers` each with its line end.
std::string rawRequest(int port, std::string_view methodAndPath, std::string_view headers = "");

} // namespace vorn::testing
