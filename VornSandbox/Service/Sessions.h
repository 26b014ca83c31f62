#pragma once

#include "VornSandbox/Service/Settings.h"
#include "VornSandbox/Service/StateDatabase.h"

#include <string>
#include <vector>

namespace vorn::sandbox {

/// An account of the phone app.
struct User {
    std::string id;
    std::string displayName;
};

struct TokenPair {
    std::string token; ///< the access token
    std::string refreshToken;
};

struct NewSession {
    TokenPair tokens;
    User user;
};

/// A linked Mac as the phone lists it.
struct SessionView {
    std::string deviceName;
    std::string userName;
    Instant linkedAt;
};

/// Sessions of linked Macs. An access token lives for a while; the refresh token buys a new pair, once. A refresh token
/// that comes a second time means that two hold it: the session ends for both.
/// Threads: hold the state's lock. Errors: `ServiceError` with status 401.
class Sessions {
public:
    Sessions(const StateDatabase& state, const Settings& settings);

    const std::vector<User>& users() const { return users_; }
    /// Throws a 404 when there is no such account.
    const User& user(const std::string& id) const;

    NewSession open(const std::string& userId, const std::string& deviceName);
    TokenPair refresh(const std::string& refreshToken);

    /// The account whose access token this is.
    const User& authenticate(const std::string& accessToken) const;
    void revoke(const std::string& accessToken);

    std::vector<SessionView> active() const;

private:
    std::int64_t idOf(const std::string& accessToken) const;

    const StateDatabase& state_;
    const Settings& settings_;
    std::vector<User> users_;
};

} // namespace vorn::sandbox
