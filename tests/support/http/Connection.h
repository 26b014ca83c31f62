#pragma once

#include "Platform/Base/FileDescriptor.h"
#include "tests/support/http/Channel.h"
#include "tests/support/http/Exchange.h"

#include <optional>

namespace vorn::testing {

/// One accepted connection: reads requests strictly and carries out its handlers' calls. Threads: one at a time.
class Connection final : public Exchange {
public:
    /// Where the requests are recorded.
    class Records {
    public:
        virtual ~Records() = default;
        /// The head is complete. Returns the number by which `ended` names the request.
        virtual std::size_t begun(const ReceivedRequest& request) = 0;
        /// More of the body has arrived. Returns whether to keep it.
        virtual bool received(std::size_t bytes) = 0;
        /// The answer is about to leave, or there will be none: the client's next actions come after this.
        virtual void ended(std::size_t index, const ReceivedRequest& request) = 0;
    };

    /// `stop` becomes readable when everything must end. Speaks TLS if there is an `identity`.
    Connection(FileDescriptor socket, const ServerIdentity& identity, std::size_t number, int stop, Records& records);
    ~Connection() override { endRequest(); }
    Connection(Connection&&) = delete;

    /// Reads the head of the next request. Returns false if the client closed instead; throws `std::runtime_error` for
    /// a malformed request.
    bool readHead();
    bool bodyIsRead() const { return bodyLeft_ == 0; }
    bool isOpen() const { return static_cast<bool>(socket_); }

    const ReceivedRequest& request() const override { return request_; }
    std::size_t readBody(std::size_t bytes) override;
    void send(std::string_view bytes) override;
    void close() override;
    void reset() override;
    void finishSending() override;
    void pause(std::chrono::milliseconds duration) override;
    void stayUntilClosed() override;

private:
    bool readMore();
    bool waitAfter(const Channel::Step& step) const;
    void waitFor(short events) const;
    void takeHead(std::string_view head);
    void takeRequestLine(std::string_view line);
    void takeHeader(std::string_view line);
    std::size_t bodyLength() const;
    void endRequest();

    FileDescriptor socket_;
    std::unique_ptr<Channel> channel_; ///< over the socket
    int stop_;
    Records& records_;
    std::optional<std::size_t> underWay_; ///< the request without an answer yet
    std::string buffer_;                  ///< received, not yet parsed
    std::size_t bodyLeft_ = 0;
    ReceivedRequest request_;
};

} // namespace vorn::testing
