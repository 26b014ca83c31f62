#include "Platform/Base/InterruptWatch.h"
#include "VornSandbox/Service/SandboxService.h"
#include "VornSandbox/Service/ServiceOptions.h"

#include <fmt/format.h>

#include <chrono>
#include <cstdio>
#include <exception>
#include <string>
#include <thread>

namespace {

using namespace vorn;
using namespace vorn::sandbox;

Instant systemTime()
{
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

void logLine(const std::string& line)
{
    fmt::print(stderr, "{}\n", line);
}

} // namespace

int main(int argc, char** argv)
{
    ServiceOptions options;
    if (const auto code = ServiceOptions::parse(argc, argv, options)) return *code;
    const InterruptWatch interrupts; // before the service starts its threads
    try {
        const SandboxService service(options, systemTime, logLine);
        fmt::print("{}\n", service.baseURL());
        std::fflush(stdout);
        while (!interrupts.cancelFlag().isCancelled()) std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return 0; // being stopped is its normal end
    } catch (const std::exception& error) {
        fmt::print(stderr, "vorn-sandbox: {}\n", error.what());
        return 1;
    }
}
