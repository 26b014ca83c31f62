#include "tests/support/service/ServiceFixture.h"

#include "Platform/Base/Match.h"
#include "tests/support/service/ServiceAnswers.h"

namespace vorn {

void PrintTo(const APIError& error, std::ostream* out)
{
    std::visit(Match{
                   [out](const APIError::HTTP& http) {
                       *out << "http " << http.status << ", message " << http.message.value_or("(none)") << ", code "
                            << http.code.value_or("(none)");
                   },
                   [out](APIError::NotSignedIn) { *out << "notSignedIn"; },
                   [out](APIError::SessionExpired) { *out << "sessionExpired"; },
                   [out](APIError::SessionChanged) { *out << "sessionChanged"; },
                   [out](APIError::InvalidResponse) { *out << "invalidResponse"; },
               },
               error.reason());
}

} // namespace vorn

namespace vorn::testing {

ServiceFixture::ServiceFixture(std::optional<StoredSession> session)
    : tokens(std::make_shared<InMemoryTokenStore>(std::move(session))), api(configurationOf(server), http, tokens)
{
}

ServiceFixture::ServiceFixture() : ServiceFixture(adasSession())
{
}

ServiceFixture::~ServiceFixture()
{
    main.shutDown();
}

std::vector<ServiceRequest> ServiceFixture::requests() const
{
    std::vector<ServiceRequest> result;
    for (const ReceivedRequest& request : server.requests()) result.push_back(ServiceRequest::of(request));
    return result;
}

ExpectedRequest ServiceFixture::refresh(const StoredSession& session) const
{
    return post("auth/desktop/refresh").json(R"({"refreshToken":")" + session.refreshToken + R"("})");
}

ExpectedRequest ServiceFixture::logout(const std::string& token) const
{
    return post("auth/desktop/logout").bearer(token);
}

APIConfiguration configurationOf(const LoopbackServer& server)
{
    return {URL::parse(server.url("")).value()};
}

APIError httpError(int status, std::optional<std::string> message, std::optional<std::string> code)
{
    return {APIError::HTTP{status, std::move(message), std::move(code)}};
}

} // namespace vorn::testing
