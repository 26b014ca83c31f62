#pragma once

#include "VornSandbox/Service/Call.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorn::sandbox {

/// Which function answers what. Threads: add all routes first; then any.
class Router {
public:
    /// The values of a pattern's placeholders, in order.
    using Arguments = std::vector<std::string>;
    using Handler = std::function<Answer(const Call&, const Arguments&)>;

    /// `pattern` is a path in which "*" stands for one whole segment, such as "/submissions/*/abort". `operation` is
    /// the name that faults know it by; several routes may share one.
    void add(std::string operation, std::string method, std::string_view pattern, Handler handler);

    struct Match {
        const std::string& operation;
        const Handler& handler;
        Arguments arguments;
    };
    /// Throws `ServiceError`: 404 for an unknown path, 405 for a known one asked in another way.
    Match match(const std::string& method, std::string_view path) const;

private:
    struct Route {
        std::string operation;
        std::string method;
        std::vector<std::string> segments;
        Handler handler;
    };
    std::vector<Route> routes_;
};

} // namespace vorn::sandbox
