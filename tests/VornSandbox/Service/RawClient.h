#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <string>
#include <string_view>

namespace vorn::testing {

/// A connection to a port of this computer that sends exactly what it is told. Reads wait for at most a minute: longer
/// than any test needs, and short enough to end a test that hangs.
class RawClient {
public:
    explicit RawClient(int port);

    void send(std::string_view text) const;
    /// Closes the sending half; answers can still be read.
    void finishSending() const;

    /// Everything until the other side closes.
    std::string readToEnd() const;
    /// Everything up to and including `mark`, perhaps more; all there is if the other side closes before.
    std::string readTo(std::string_view mark) const;

private:
    /// Appends received bytes; false at the end.
    bool readSome(std::string& text) const;

    FileDescriptor socket_;
};

/// A request without a body, as a client of the service at `port` sends it; `headers` each with its line end.
std::string rawRequest(int port, std::string_view methodAndPath, std::string_view headers = "");

} // namespace vorn::testing
