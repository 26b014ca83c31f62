// What `bench/upload` measures, each in a process of its own. Prints one line of JSON.
//
//   bench-upload send URL FILE   the whole upload to a sink: seconds in all and for the hash, and bytes of memory
//   bench-upload calls URL N     N calls of the API on a kept-alive connection: seconds a call, CPU and wall
//   bench-upload hash FILE       the hash alone

#include "Platform/Async/BackgroundPool.h"
#include "Platform/Async/MainContext.h"
#include "Platform/Base/SHA256.h"
#include "VornMacCore/Client/InMemoryTokenStore.h"
#include "VornMacCore/Client/MultipartUploader.h"

#include <chrono>
#include <cstdint>
#include <ctime>
#include <exception>
#include <fstream>
#include <string>
#include <vector>

#include <fmt/format.h>

namespace vorn::bench {
namespace {

using Seconds = std::chrono::duration<double>;
using SteadyClock = std::chrono::steady_clock;

/// The most memory this process ever held, in bytes; 0 where the system does not say. Not from `getrusage`, which also
/// counts what the process held before it executed this program.
std::int64_t peakMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) return std::stoll(line.substr(6)) * 1024;
    }
    return 0;
}

double cpuSeconds()
{
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

/// Notes when the first request leaves: until then the file is hashed.
class NotingSession final : public HTTPSession {
public:
    Async<HTTPResponse> send(HTTPRequest request) override
    {
        if (first == SteadyClock::time_point{}) first = SteadyClock::now();
        return next_->send(std::move(request));
    }
    SteadyClock::time_point first;

private:
    std::shared_ptr<HTTPSession> next_ = HTTPSession::make();
};

struct Client {
    explicit Client(const std::string& url) : api({URL::parse(url).value()}, session, store) {}

    std::shared_ptr<NotingSession> session = std::make_shared<NotingSession>();
    std::shared_ptr<TokenStore> store =
        std::make_shared<InMemoryTokenStore>(StoredSession{"token", "refresh", "user", "Ada"});
    MainContext context;
    BackgroundPool pool;
    VornAPI api;
};

void send(const std::string& url, const std::string& file)
{
    Client client(url);
    client.context.run(client.api.nimbrelState());
    const std::int64_t idle = peakMemory();
    client.session->first = {};
    std::int64_t reports = 0;
    const MultipartUploader uploader(client.api, client.session, client.pool);
    const auto begin = SteadyClock::now();
    client.context.run(uploader.upload(file, {.termsVersion = "1", .device = {}},
                                       [&reports](const UploadProgress& /*progress*/) { ++reports; }));
    const auto end = SteadyClock::now();
    fmt::print(R"({{"whole": {}, "hash": {}, "memory": {}, "idle": {}, "reports": {}}})"
               "\n",
               Seconds(end - begin).count(), Seconds(client.session->first - begin).count(), peakMemory() - idle, idle,
               reports);
}

void call(const std::string& url, int count)
{
    constexpr int warm = 200;
    Client client(url);
    for (int done = 0; done < warm; ++done) client.context.run(client.api.nimbrelState());
    const double cpu = cpuSeconds();
    const auto begin = SteadyClock::now();
    for (int done = 0; done < count; ++done) client.context.run(client.api.nimbrelState());
    const double wall = Seconds(SteadyClock::now() - begin).count();
    fmt::print(R"({{"cpu": {}, "wall": {}}})"
               "\n",
               (cpuSeconds() - cpu) / count, wall / count);
}

void hash(const std::string& file)
{
    const auto begin = SteadyClock::now();
    const std::string digest = SHA256::hexDigestOfFile(file);
    fmt::print(R"({{"seconds": {}, "digest": "{}"}})"
               "\n",
               Seconds(SteadyClock::now() - begin).count(), digest);
}

int run(const std::vector<std::string>& arguments)
{
    const std::string what = arguments.empty() ? "" : arguments.front();
    if (what == "send" && arguments.size() == 3) {
        send(arguments[1], arguments[2]);
    } else if (what == "calls" && arguments.size() == 3) {
        call(arguments[1], std::stoi(arguments[2]));
    } else if (what == "hash" && arguments.size() == 2) {
        hash(arguments[1]);
    } else {
        fmt::print(stderr, "usage: bench-upload send URL FILE | calls URL N | hash FILE\n");
        return 2;
    }
    return 0;
}

} // namespace
} // namespace vorn::bench

int main(int count, char** arguments)
{
    try {
        return vorn::bench::run({arguments + 1, arguments + count});
    } catch (const std::exception& error) {
        fmt::print(stderr, "bench-upload: {}\n", error.what());
        return 1;
    }
}
