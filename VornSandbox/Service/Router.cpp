#include "VornSandbox/Service/Router.h"

#include "VornSandbox/Service/ServiceError.h"

#include <optional>

namespace vorn::sandbox {
namespace {

std::vector<std::string> segmentsOf(std::string_view path)
{
    std::vector<std::string> segments;
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        segments.emplace_back(path.substr(start, end - start));
        start = end + 1;
    }
    return segments;
}

std::optional<Router::Arguments> fit(const std::vector<std::string>& pattern, const std::vector<std::string>& path)
{
    if (pattern.size() != path.size()) return std::nullopt;
    Router::Arguments arguments;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == "*" && !path[i].empty()) {
            arguments.push_back(path[i]);
        } else if (pattern[i] != path[i]) {
            return std::nullopt;
        }
    }
    return arguments;
}

} // namespace

void Router::add(std::string operation, std::string method, std::string_view pattern, Handler handler)
{
    routes_.push_back({.operation = std::move(operation),
                       .method = std::move(method),
                       .segments = segmentsOf(pattern),
                       .handler = std::move(handler)});
}

Router::Match Router::match(const std::string& method, std::string_view path) const
{
    const std::vector<std::string> segments = segmentsOf(path);
    bool known = false;
    for (const Route& route : routes_) {
        auto arguments = fit(route.segments, segments);
        if (!arguments) continue;
        if (route.method == method) {
            return {.operation = route.operation, .handler = route.handler, .arguments = *std::move(arguments)};
        }
        known = true;
    }
    if (known) throw ServiceError(405, "wrong_method", "That path does not take " + method + ".");
    throw ServiceError(404, "unknown_path", "There is nothing at that path.");
}

} // namespace vorn::sandbox
