#pragma once

#include "VornSandbox/Service/Call.h"
#include "VornSandbox/Service/State.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace vorn::sandbox {

/// The accounts of the phone app, the links that ask to link a Mac to one, and the sessions of linked Macs. A link is
/// pending, then scanned, then approved or rejected; it expires if the phone is too slow. An access token is valid for
/// a limited time; a refresh token can be exchanged for a new pair, once. A refresh token that is used again is in the
/// hands of two parties: the session ends for both. Threads: any.
class Accounts {
public:
    Accounts(State& state, const Settings& settings);
    Accounts(Accounts&&) = delete;

    std::vector<Route> routes();

    /// Returns the account whose access token the request carries; throws `ServiceError` 401 without a valid token.
    /// Threads: hold the state's lock.
    std::string authenticate(const Call& call) const;

    /// The name of the account; empty when there is none. Threads: hold the state's lock.
    std::string nameOf(const std::string& userId) const;

    /// Adds what the page shows of accounts, unanswered links and linked Macs. Threads: hold the state's lock.
    void show(nlohmann::json& view) const;

private:
    Answer createLink(const Call& call);
    Answer pollLink(const Call& call);
    Answer refresh(const Call& call);
    Answer logout(const Call& call);
    Answer scanCode(const Call& call);
    Answer scan(const Call& call);
    Answer approve(const Call& call);
    Answer reject(const Call& call);

    std::string linkStatus(const std::string& linkId) const;
    void moveLink(const std::string& linkId, const std::string& from, const std::string& to);
    void approveLink(const std::string& linkId, const std::string& userId);
    void advanceByItself(const std::string& linkId);
    nlohmann::json openSession(const std::string& userId, const std::string& deviceName);
    std::int64_t sessionOf(const Call& call) const;

    State& state_;
    const Settings& settings_;
};

} // namespace vorn::sandbox
