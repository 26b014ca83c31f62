#pragma once

#include "Platform/Async/Async.h"
#include "Platform/HTTP/HTTPSession.h"
#include "VornMacCore/Client/APIConfiguration.h"
#include "VornMacCore/Client/TokenStore.h"
#include "VornMacCore/Wire/WireRecords.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace vorn {

class APITransport;
class BackgroundExecutor;
class SessionKeeper;
struct APICall;

/// The client of the service's JSON API. Copies are cheap and share everything, the session included.
/// Threads: any, several at once. Errors of every call: `APIError`; `URLError` when no answer came; `UnencodableJSON`
/// before anything is sent; `Cancelled`. An authenticated call answered with 401 renews the session, once for all calls
/// so answered, and is sent once more; nothing else is ever sent twice.
class VornAPI {
public:
    /// Long answers are decoded on `background`, and the store is used there to renew or clear a session; if null, both
    /// happen where the call runs. `background` must outlive every call.
    VornAPI(APIConfiguration configuration, std::shared_ptr<HTTPSession> session, std::shared_ptr<TokenStore> tokens,
            BackgroundExecutor* background = nullptr);

    /// Returns a copy that acts only for the user `userId`: while another user, or no one, is signed in, its
    /// authenticated calls throw `APIError::SessionChanged` and send nothing.
    VornAPI pinned(std::string userId) const;

    // Linking, without a session.
    Async<DeviceLink> createDeviceLink(const CreateDeviceLinkRequest& request) const;
    Async<DeviceLinkPoll> pollDeviceLink(const std::string& linkId, const std::string& pollSecret) const;

    // The quest and its submissions.
    Async<NimbrelState> nimbrelState() const;
    Async<SubmissionUpload> createSubmission(const CreateSubmissionRequest& request) const;
    /// The URLs of `count` parts from number `fromPart` on; parts are numbered from 1.
    Async<PartUrls> partUrls(const std::string& submissionId, const std::string& assetId, std::int64_t fromPart,
                             std::int64_t count) const;
    Async<SubmissionStatus> completeAsset(const std::string& submissionId, const std::string& assetId,
                                          const CompleteAssetRequest& body) const;
    Async<IgnoredBody> abortSubmission(const std::string& id) const;
    Async<SubmissionStatus> submission(const std::string& id) const;

    // The session.
    /// Stores the session of an approved link. Throws the store's errors.
    void adopt(const StoredSession& session) const;
    /// Drops the stored session, on this computer only, and returns it.
    std::optional<StoredSession> forget() const;
    /// As above, if the session is that of the user `userId`. Keeps another user's, which another program may have
    /// stored.
    std::optional<StoredSession> forget(const std::string& userId) const;
    /// Tells the service that `session` has ended; does not touch the store. Failures are logged; only `Cancelled` is
    /// thrown.
    Async<> revoke(StoredSession session) const;
    /// Forgets the session, then revokes it; sends nothing when there is none.
    Async<> logout() const;

private:
    template <class Record>
    Async<Record> send(APICall call) const;
    template <class Record>
    Async<Record> sendUnauthenticated(APICall call) const;

    std::shared_ptr<const APITransport> transport_;
    std::shared_ptr<SessionKeeper> keeper_;
    std::optional<std::string> pinnedUserId_;
};

} // namespace vorn
