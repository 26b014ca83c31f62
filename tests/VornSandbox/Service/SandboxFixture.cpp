#include "tests/VornSandbox/Service/SandboxFixture.h"

#include "Platform/Base/SHA256.h"

#include <httplib.h>

#include <algorithm>
#include <stdexcept>

namespace vorn::testing {

using nlohmann::json;
using namespace sandbox;

namespace {

std::string lowerCase(std::string text)
{
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

Reply read(const httplib::Result& result)
{
    if (!result) return {};
    Reply reply{.status = result->status,
                .body = json::parse(result->body, nullptr, false),
                .text = result->body,
                .headers = {}};
    for (const auto& [name, value] : result->headers) reply.headers[lowerCase(name)] = value;
    return reply;
}

} // namespace

SandboxFixture::SandboxFixture(ServiceOptions options) : partSize_(options.settings.partSize)
{
    options.port = 0;
    service_ = std::make_unique<SandboxService>(options, clock(), [this](const std::string& line) {
        const std::lock_guard lock(mutex_);
        log_.push_back(line);
    });
    baseURL_ = service_->baseURL();
}

Clock SandboxFixture::clock() const
{
    return [this] { return Instant(std::chrono::milliseconds(now_.load())); };
}

int SandboxFixture::port() const
{
    return std::stoi(baseURL_.substr(baseURL_.rfind(':') + 1));
}

std::vector<std::string> SandboxFixture::log() const
{
    const std::lock_guard lock(mutex_);
    return log_;
}

Reply SandboxFixture::send(const std::string& method, const std::string& path, const Headers& headers,
                           const std::optional<std::string>& body) const
{
    httplib::Client client("127.0.0.1", port());
    client.set_read_timeout(20);
    httplib::Request request;
    request.method = method;
    request.path = path;
    for (const auto& [name, value] : headers) request.set_header(name, value);
    if (body) {
        request.set_header("Content-Length", std::to_string(body->size()));
        // As a body of its own, the library would give it a Content-Type.
        request.content_length_ = body->size();
        request.content_provider_ = [&](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
            return sink.write(body->data() + offset, length);
        };
    }
    return read(client.send(request));
}

Reply SandboxFixture::api(const std::string& method, const std::string& path, const std::optional<json>& body,
                          const std::string& token) const
{
    Headers headers{{"Accept", "application/json"}};
    if (!token.empty()) headers["Authorization"] = "Bearer " + token;
    if (!body) return send(method, "/api/v1/" + path, headers);
    headers["Content-Type"] = "application/json";
    return send(method, "/api/v1/" + path, headers, body->dump());
}

Reply SandboxFixture::phone(const std::string& path, const json& body) const
{
    return send("POST", "/phone/" + path, {{"Content-Type", "application/json"}, {"Origin", baseURL()}}, body.dump());
}

json SandboxFixture::createLink() const
{
    const Reply reply = api(
        "POST", "auth/device-links",
        json{{"deviceName", "Test Mac"}, {"platform", "macos"}, {"appVersion", "1.0.0"}, {"osVersion", "macOS 14.5"}});
    if (reply.status != 201) throw std::runtime_error("no link: " + reply.text);
    return reply.body;
}

Reply SandboxFixture::poll(const json& link) const
{
    return api("POST", "auth/device-links/poll", json{{"linkId", link["linkId"]}, {"pollSecret", link["pollSecret"]}});
}

Tokens SandboxFixture::link(const std::string& userId) const
{
    const json link = createLink();
    const std::string path = "links/" + link["linkId"].get<std::string>();
    phone(path + "/scan");
    phone(path + "/approve", {{"userId", userId}});
    const json session = poll(link).body.at("session");
    return {.token = session["token"], .refreshToken = session["refreshToken"]};
}

Upload SandboxFixture::open(const std::string& token, const std::string& archive) const
{
    const auto size = static_cast<std::int64_t>(archive.size());
    const auto parts = std::max<std::int64_t>(1, (size + partSize_ - 1) / partSize_);
    const Reply reply =
        api("POST", "desktop/nimbrel/submissions",
            json{{"termsVersion", "vorn-mac-nimbrel-1"}, {"sizeBytes", size}, {"partCount", parts}}, token);
    if (reply.status != 201) throw std::runtime_error("no submission: " + reply.text);
    const json& asset = reply.body["assets"][0];
    Upload upload{.id = reply.body["submissionId"],
                  .assetId = asset["assetId"],
                  .urls = {},
                  .expiresInSeconds = reply.body["expiresInSeconds"]};
    for (const json& part : asset["parts"]) upload.urls[part["partNumber"]] = part["url"];
    return upload;
}

Reply SandboxFixture::put(const std::string& url, const std::string& bytes, const Headers& headers) const
{
    if (!url.starts_with(baseURL())) throw std::runtime_error("the part URL leads elsewhere");
    return send("PUT", url.substr(baseURL().size()), headers, bytes);
}

json SandboxFixture::putAll(const Upload& upload, const std::string& archive) const
{
    json parts = json::array();
    for (const auto& [number, url] : upload.urls) {
        const auto start = static_cast<std::size_t>((number - 1) * partSize_);
        const Reply reply = put(url, archive.substr(start, static_cast<std::size_t>(partSize_)));
        if (reply.status != 200) throw std::runtime_error("no part: " + reply.text);
        parts.push_back({{"partNumber", number}, {"etag", reply.headers.at("etag")}});
    }
    return parts;
}

Reply SandboxFixture::complete(const std::string& token, const Upload& upload, const json& parts,
                               const std::string& archive) const
{
    return api("POST", "desktop/nimbrel/submissions/" + upload.id + "/assets/" + upload.assetId + "/complete",
               json{{"parts", parts}, {"sha256", hexSHA256(archive)}}, token);
}

std::string SandboxFixture::submit(const std::string& token, const std::string& archive) const
{
    const Upload upload = open(token, archive);
    const Reply reply = complete(token, upload, putAll(upload, archive), archive);
    if (reply.status != 200) throw std::runtime_error("not complete: " + reply.text);
    return upload.id;
}

Reply SandboxFixture::submission(const std::string& token, const std::string& id) const
{
    return api("GET", "desktop/nimbrel/submissions/" + id, {}, token);
}

json SandboxFixture::quest(const std::string& token) const
{
    return api("GET", "desktop/nimbrel", {}, token).body.at("quest");
}

ServiceOptions smallParts()
{
    ServiceOptions options;
    options.settings.partSize = 1000;
    return options;
}

std::string hexSHA256(const std::string& bytes)
{
    SHA256 hash;
    hash.update(bytesOf(bytes));
    return hash.hexDigest();
}

} // namespace vorn::testing
