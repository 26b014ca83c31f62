#pragma once

#include "VornSandbox/Service/Sessions.h"
#include "VornSandbox/Service/Settings.h"
#include "VornSandbox/Service/StateDatabase.h"

#include <optional>
#include <string>
#include <vector>

namespace vorn::sandbox {

/// The Mac that asks to be linked, as it describes itself.
struct LinkRequest {
    std::string deviceName;
    std::string platform;
    std::string appVersion;
    std::optional<std::string> osVersion;
};

struct NewLink {
    std::string linkId;
    std::string pollSecret;
    std::string qrPayload;
    Instant expiresAt;
};

struct LinkPoll {
    std::string status; ///< "pending", "scanned", "approved", "rejected" or "expired"
    std::optional<NewSession> session;
};

/// A link as the phone sees it.
struct LinkView {
    std::string id;
    LinkRequest request;
    std::string status;
    Instant expiresAt;
};

/// Links a Mac to an account: pending, then scanned, then approved or rejected; or expired, when the phone was too
/// slow. Threads: hold the state's lock. Errors: `ServiceError`.
class DeviceLinks {
public:
    DeviceLinks(const StateDatabase& state, const Settings& settings, Sessions& sessions);

    NewLink create(const LinkRequest& request);

    /// What the Mac asks again and again. The first answer after the approval carries the session, and no other does:
    /// only the holder of the poll secret can have it, and only once.
    LinkPoll poll(const std::string& linkId, const std::string& pollSecret);

    void scan(const std::string& linkId);
    /// Scans the code whose text is `qrPayload`; returns its link.
    std::string scanCode(const std::string& qrPayload);
    void approve(const std::string& linkId, const std::string& userId);
    void reject(const std::string& linkId);

    /// Links that wait for the phone, the newest first.
    std::vector<LinkView> waiting() const;

private:
    LinkView find(const std::string& linkId) const;
    void move(const LinkView& link, const std::string& from, const std::string& to);
    void advanceByItself(LinkView& link);
    std::optional<NewSession> deliver(const LinkView& link);
    std::string statusNow(const std::string& stored, Instant expiresAt) const;

    const StateDatabase& state_;
    const Settings& settings_;
    Sessions& sessions_;
};

} // namespace vorn::sandbox
