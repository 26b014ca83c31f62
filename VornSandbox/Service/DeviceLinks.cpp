#include "VornSandbox/Service/DeviceLinks.h"

#include "VornSandbox/Service/Secrets.h"
#include "VornSandbox/Service/ServiceError.h"

#include <fmt/format.h>

namespace vorn::sandbox {
namespace {

constexpr auto codePrefix = "vorn://link?code=";

SQLiteValue orNull(const std::optional<std::string>& text)
{
    return text ? SQLiteValue(*text) : SQLiteValue(nullptr);
}

/// Unknown and wrongly proven links read the same: the answer tells nobody which ids exist.
ServiceError noSuchLink()
{
    return {404, "unknown_link", "There is no such link."};
}

} // namespace

DeviceLinks::DeviceLinks(const StateDatabase& state, const Settings& settings, Sessions& sessions)
    : state_(state), settings_(settings), sessions_(sessions)
{
}

NewLink DeviceLinks::create(const LinkRequest& request)
{
    const std::string code = newSecret();
    NewLink link{.linkId = newIdentifier("lnk_"),
                 .pollSecret = newSecret(),
                 .qrPayload = codePrefix + code,
                 .expiresAt = state_.now() + settings_.linkLifetime};
    state_.run(
        "INSERT INTO link(id, pollHash, codeHash, deviceName, platform, appVersion, osVersion, createdAt, expiresAt,"
        " status) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, 'pending')",
        {link.linkId, hashOf(link.pollSecret), hashOf(code), request.deviceName, request.platform, request.appVersion,
         orNull(request.osVersion), toMilliseconds(state_.now()), toMilliseconds(link.expiresAt)});
    return link;
}

LinkPoll DeviceLinks::poll(const std::string& linkId, const std::string& pollSecret)
{
    if (state_.number("SELECT count(*) FROM link WHERE id = ? AND pollHash = ?", {linkId, hashOf(pollSecret)}) == 0) {
        throw noSuchLink();
    }
    LinkView link = find(linkId);
    if (settings_.autoApprove) advanceByItself(link);
    LinkPoll poll{.status = link.status, .session = {}};
    if (link.status == "approved") poll.session = deliver(link);
    return poll;
}

void DeviceLinks::advanceByItself(LinkView& link)
{
    if (link.status == "pending") {
        move(link, "pending", "scanned");
    } else if (link.status == "scanned") {
        approve(link.id, sessions_.users().front().id);
    }
    link = find(link.id);
}

std::optional<NewSession> DeviceLinks::deliver(const LinkView& link)
{
    std::string userId;
    state_.query("SELECT userId FROM link WHERE id = ? AND delivered = 0", {link.id},
                 [&](const SQLiteRow& row) { userId = row.text(0).value_or(""); });
    if (userId.empty()) return std::nullopt;
    state_.run("UPDATE link SET delivered = 1 WHERE id = ?", {link.id});
    return sessions_.open(userId, link.request.deviceName);
}

void DeviceLinks::scan(const std::string& linkId)
{
    move(find(linkId), "pending", "scanned");
}

std::string DeviceLinks::scanCode(const std::string& qrPayload)
{
    std::string linkId;
    if (qrPayload.starts_with(codePrefix)) {
        state_.query("SELECT id FROM link WHERE codeHash = ?",
                     {hashOf(std::string_view(qrPayload).substr(std::string_view(codePrefix).size()))},
                     [&](const SQLiteRow& row) { linkId = row.text(0).value_or(""); });
    }
    if (linkId.empty()) throw ServiceError(404, "unknown_code", "That is not a code of this service.");
    scan(linkId);
    return linkId;
}

void DeviceLinks::approve(const std::string& linkId, const std::string& userId)
{
    const User user = sessions_.user(userId);
    move(find(linkId), "scanned", "approved");
    state_.run("UPDATE link SET userId = ? WHERE id = ?", {user.id, linkId});
}

void DeviceLinks::reject(const std::string& linkId)
{
    move(find(linkId), "scanned", "rejected");
}

void DeviceLinks::move(const LinkView& link, const std::string& from, const std::string& to)
{
    if (link.status != from) {
        throw ServiceError(409, "wrong_link_state", fmt::format("The link is {}, not {}.", link.status, from));
    }
    state_.run("UPDATE link SET status = ? WHERE id = ?", {to, link.id});
}

std::string DeviceLinks::statusNow(const std::string& stored, Instant expiresAt) const
{
    const bool waits = stored == "pending" || stored == "scanned";
    return waits && state_.now() >= expiresAt ? "expired" : stored;
}

LinkView DeviceLinks::find(const std::string& linkId) const
{
    std::optional<LinkView> link;
    state_.query("SELECT deviceName, platform, appVersion, osVersion, status, expiresAt FROM link WHERE id = ?",
                 {linkId}, [&](const SQLiteRow& row) {
                     const Instant expiresAt = fromMilliseconds(row.int64OrZero(5));
                     link = LinkView{.id = linkId,
                                     .request = {.deviceName = row.text(0).value_or(""),
                                                 .platform = row.text(1).value_or(""),
                                                 .appVersion = row.text(2).value_or(""),
                                                 .osVersion = row.text(3)},
                                     .status = statusNow(row.text(4).value_or(""), expiresAt),
                                     .expiresAt = expiresAt};
                 });
    if (!link) throw noSuchLink();
    return *link;
}

std::vector<LinkView> DeviceLinks::waiting() const
{
    std::vector<std::string> ids;
    state_.query("SELECT id FROM link WHERE status IN ('pending', 'scanned') AND expiresAt > ? ORDER BY sequence DESC",
                 {toMilliseconds(state_.now())},
                 [&](const SQLiteRow& row) { ids.push_back(row.text(0).value_or("")); });
    std::vector<LinkView> links;
    links.reserve(ids.size());
    for (const std::string& id : ids) links.push_back(find(id));
    return links;
}

} // namespace vorn::sandbox
