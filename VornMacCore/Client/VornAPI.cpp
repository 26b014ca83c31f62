#include "VornMacCore/Client/VornAPI.h"

#include "VornMacCore/Client/APIAnswer.h"
#include "VornMacCore/Client/APITransport.h"
#include "VornMacCore/Client/SessionKeeper.h"

#include <utility>

namespace vorn {
namespace {

using Method = HTTPRequest::Method;
using Transport = std::shared_ptr<const APITransport>;
using Keeper = std::shared_ptr<SessionKeeper>;

// Coroutines own what they use, so that a call may outlive the client on which it was made.

template <class Record>
Async<Record> sendFramed(Transport transport, APICall call)
{
    HTTPResponse response = co_await transport->send(std::move(call), std::nullopt);
    co_return co_await decodeApart<Record>(std::move(response), transport->log(), transport->background());
}

template <class Record>
Async<Record> sendSigned(Transport transport, Keeper keeper, std::optional<std::string> pinnedUserId, APICall call)
{
    const StoredSession session = keeper->current(pinnedUserId);
    HTTPResponse response = co_await transport->send(call, session.token);
    if (response.status == 401) {
        const StoredSession fresh = co_await SessionKeeper::refreshedSession(keeper, session);
        response = co_await transport->send(std::move(call), fresh.token);
        // Decoding this answer then throws `APIError::SessionExpired`.
        if (response.status == 401) co_await SessionKeeper::clearIfCurrent(keeper, fresh);
    }
    co_return co_await decodeApart<Record>(std::move(response), transport->log(), transport->background());
}

Async<> forgetAndRevoke(Keeper keeper)
{
    if (auto session = keeper->forget()) co_await SessionKeeper::revoke(keeper, *std::move(session));
}

std::string pathOf(const std::string& submissionId)
{
    return "desktop/nimbrel/submissions/" + submissionId;
}

std::string pathOf(const std::string& submissionId, const std::string& assetId)
{
    return pathOf(submissionId) + "/assets/" + assetId;
}

} // namespace

VornAPI::VornAPI(APIConfiguration configuration, std::shared_ptr<HTTPSession> session,
                 std::shared_ptr<TokenStore> tokens, BackgroundExecutor* background)
    : transport_(std::make_shared<APITransport>(std::move(configuration), std::move(session), background)),
      keeper_(std::make_shared<SessionKeeper>(*transport_, std::move(tokens)))
{
}

VornAPI VornAPI::pinned(std::string userId) const
{
    VornAPI copy = *this;
    copy.pinnedUserId_ = std::move(userId);
    return copy;
}

template <class Record>
Async<Record> VornAPI::send(APICall call) const
{
    return sendSigned<Record>(transport_, keeper_, pinnedUserId_, std::move(call));
}

template <class Record>
Async<Record> VornAPI::sendUnauthenticated(APICall call) const
{
    return sendFramed<Record>(transport_, std::move(call));
}

// POST auth/device-links
Async<DeviceLink> VornAPI::createDeviceLink(const CreateDeviceLinkRequest& request) const
{
    return sendUnauthenticated<DeviceLink>({Method::post, "auth/device-links", toJSON(request)});
}

// POST auth/device-links/poll
Async<DeviceLinkPoll> VornAPI::pollDeviceLink(const std::string& linkId, const std::string& pollSecret) const
{
    return sendUnauthenticated<DeviceLinkPoll>(
        {Method::post, "auth/device-links/poll", toJSON(PollDeviceLinkRequest{linkId, pollSecret})});
}

// GET desktop/nimbrel
Async<NimbrelState> VornAPI::nimbrelState() const
{
    return send<NimbrelState>({Method::get, "desktop/nimbrel", std::nullopt});
}

// POST desktop/nimbrel/submissions
Async<SubmissionUpload> VornAPI::createSubmission(const CreateSubmissionRequest& request) const
{
    return send<SubmissionUpload>({Method::post, "desktop/nimbrel/submissions", toJSON(request)});
}

// POST desktop/nimbrel/submissions/<submissionId>/assets/<assetId>/part-urls
Async<PartUrls> VornAPI::partUrls(const std::string& submissionId, const std::string& assetId, std::int64_t fromPart,
                                  std::int64_t count) const
{
    return send<PartUrls>(
        {Method::post, pathOf(submissionId, assetId) + "/part-urls", toJSON(PartUrlsRequest{fromPart, count})});
}

// POST desktop/nimbrel/submissions/<submissionId>/assets/<assetId>/complete
Async<SubmissionStatus> VornAPI::completeAsset(const std::string& submissionId, const std::string& assetId,
                                               const CompleteAssetRequest& body) const
{
    return send<SubmissionStatus>({Method::post, pathOf(submissionId, assetId) + "/complete", toJSON(body)});
}

// POST desktop/nimbrel/submissions/<id>/abort
Async<IgnoredBody> VornAPI::abortSubmission(const std::string& id) const
{
    return send<IgnoredBody>({Method::post, pathOf(id) + "/abort", std::nullopt});
}

// GET desktop/nimbrel/submissions/<id>
Async<SubmissionStatus> VornAPI::submission(const std::string& id) const
{
    return send<SubmissionStatus>({Method::get, pathOf(id), std::nullopt});
}

void VornAPI::adopt(const StoredSession& session) const
{
    keeper_->adopt(session);
}

std::optional<StoredSession> VornAPI::forget() const
{
    return keeper_->forget();
}

std::optional<StoredSession> VornAPI::forget(const std::string& userId) const
{
    return keeper_->forget(userId);
}

Async<> VornAPI::revoke(StoredSession session) const
{
    return SessionKeeper::revoke(keeper_, std::move(session));
}

Async<> VornAPI::logout() const
{
    return forgetAndRevoke(keeper_);
}

} // namespace vorn
