#include "VornMacCore/Client/StoredSession.h"

#include "VornMacCore/Wire/JSONRecord.h"

#include <utility>

namespace vorn {

template <>
inline constexpr auto jsonFields<StoredSession> = std::tuple{
    JSONField{"token", &StoredSession::token},
    JSONField{"refreshToken", &StoredSession::refreshToken},
    JSONField{"userId", &StoredSession::userId},
    JSONField{"displayName", &StoredSession::displayName},
};

StoredSession::StoredSession(std::string accessToken, std::string nextToken, std::string user, std::string name)
    : token(std::move(accessToken)), refreshToken(std::move(nextToken)), userId(std::move(user)),
      displayName(std::move(name))
{
}

StoredSession::StoredSession(const DesktopSession& session)
    : StoredSession(session.token, session.refreshToken, session.user.id, session.user.displayName)
{
}

StoredSession StoredSession::fromJSON(std::string_view text)
{
    return decodeJSON<StoredSession>(text);
}

std::string StoredSession::toJSON() const
{
    return encodeJSON(*this);
}

} // namespace vorn
