#include "Platform/HTTP/CurlHandle.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {
namespace {

constexpr long uploadBuffer = 512 * 1024;
constexpr std::string_view blankCharacters = " \t";

const char* nameOf(HTTPRequest::Method method) noexcept
{
    switch (method) {
    case HTTPRequest::Method::get: return "GET";
    case HTTPRequest::Method::post: return "POST";
    case HTTPRequest::Method::put: return "PUT";
    }
    return "GET";
}

/// The URL without its user info, which libcurl would send as an `Authorization` header.
std::string addressOf(const URL& url)
{
    std::string text = url.text();
    if (!url.hasUserInfo()) return text;
    const auto authority = text.find("://") + 3;
    return text.erase(authority, text.find('@', authority) + 1 - authority);
}

void setRequest(CURL* handle, const HTTPRequest& request)
{
    set(handle, CURLOPT_URL, addressOf(request.url).c_str());
    set(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    set(handle, CURLOPT_PATH_AS_IS, 1L);
    set(handle, CURLOPT_FOLLOWLOCATION, 0L);
    // One request at a time per connection, which a cancellation closes. HTTP/2 would share the connection between
    // requests and let libcurl repeat refused ones, and gains nothing for parts that are sent one after another.
    set(handle, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
}

void setBody(CURL* handle, const HTTPRequest& request)
{
    if (request.method == HTTPRequest::Method::get && !request.body) return;
    // An upload with a custom method: libcurl's POST would add a Content-Type.
    const std::int64_t size = bodySizeOf(request);
    set(handle, CURLOPT_UPLOAD, 1L);
    set(handle, CURLOPT_CUSTOMREQUEST, nameOf(request.method));
    set(handle, CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(size));
    if (size > 64 * 1024) set(handle, CURLOPT_UPLOAD_BUFFERSIZE, uploadBuffer);
}

CurlList listOf(const std::vector<std::string>& lines)
{
    CurlList list;
    for (const std::string& line : lines) {
        curl_slist* const longer = curl_slist_append(list.get(), line.c_str());
        if (longer == nullptr) throw URLError(URLError::Code::unknown);
        if (!list) list.reset(longer);
    }
    return list;
}

CurlList setHeaders(CURL* handle, const HTTPRequest& request)
{
    std::vector<std::string> lines;
    for (const auto& [name, value] : request.headers) {
        // "Name:" would remove the header, "Name;" sends it without a value.
        const bool isEmpty = value.find_first_not_of(blankCharacters) == std::string::npos;
        lines.push_back(name);
        lines.back().append(isEmpty ? ";" : ": ").append(isEmpty ? "" : value);
    }
    for (const char* const added : {"Accept", "Content-Type", "Expect", "Proxy-Connection", "User-Agent"}) {
        if (!findHeader(request.headers, added)) lines.push_back(std::string(added) + ":");
    }
    CurlList list = listOf(lines);
    set(handle, CURLOPT_HTTPHEADER, list.get());
    return list;
}

void setConnection(CURL* handle, const HTTPRequest& request)
{
    const auto limit = std::max<std::int64_t>(request.inactivityLimit.count(), 1);
    set(handle, CURLOPT_NOSIGNAL, 1L);
    set(handle, CURLOPT_QUICK_EXIT, 1L); // a pending name lookup must not delay cancelling or ending
    // libcurl gives half of it to the first of several addresses.
    set(handle, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(limit));
}

void setTrust(CURL* handle, const std::string& authorities)
{
    set(handle, CURLOPT_SSL_VERIFYPEER, 1L);
    set(handle, CURLOPT_SSL_VERIFYHOST, 2L);
    if (authorities.empty()) return;
    curl_blob blob{.data = const_cast<char*>(authorities.data()), .len = authorities.size(), .flags = CURL_BLOB_COPY};
    set(handle, CURLOPT_CAINFO_BLOB, &blob);
    set(handle, CURLOPT_CAPATH,
        static_cast<const char*>(nullptr)); // or the system's folder would be trusted too
}

CurlList setProxy(CURL* handle, const std::optional<std::string>& proxy)
{
    CurlList list = listOf({"Proxy-Connection:", "User-Agent:"});
    set(handle, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    set(handle, CURLOPT_HEADEROPT, static_cast<long>(CURLHEADER_SEPARATE)); // keeps tokens from the proxy
    set(handle, CURLOPT_PROXYHEADER, list.get());
    if (proxy) set(handle, CURLOPT_PROXY, proxy->c_str());
    return list;
}

} // namespace

std::int64_t bodySizeOf(const HTTPRequest& request) noexcept
{
    return request.body ? request.body->size() : 0;
}

CurlHeaders configure(CURL* handle, const HTTPRequest& request, const std::optional<std::string>& proxy,
                      const std::string& authorities)
{
    setRequest(handle, request);
    setBody(handle, request);
    setConnection(handle, request);
    setTrust(handle, authorities);
    return {.request = setHeaders(handle, request), .proxy = setProxy(handle, proxy)};
}

} // namespace vorn
