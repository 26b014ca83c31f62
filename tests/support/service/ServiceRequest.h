#pragma once

#include "tests/support/http/Exchange.h"

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace vorn::testing {

/// Everything that the service sees of a request, to compare as a whole: a header too many is as wrong as one too few.
struct ServiceRequest {
    std::string line;                 ///< "POST /api/v1/auth/device-links"
    std::vector<std::string> headers; ///< "Name: value", in alphabetical order
    std::string body;
    bool operator==(const ServiceRequest&) const = default;

    static ServiceRequest of(const ReceivedRequest& received);
};

/// Describes an expected request, beginning with what every request has.
class ExpectedRequest {
public:
    /// To "127.0.0.1:<port>". `path` follows "/api/v1/" as on the request line.
    ExpectedRequest(std::string method, std::string path, int port);

    ExpectedRequest bearer(const std::string& token) const;
    ExpectedRequest json(std::string body) const;

    operator ServiceRequest() const; // NOLINT(google-explicit-constructor): it stands for one

private:
    std::string method_;
    std::string path_;
    int port_;
    std::optional<std::string> token_;
    std::optional<std::string> body_;
};

void PrintTo(const ServiceRequest& request, std::ostream* out); // NOLINT(readability-identifier-naming): GoogleTest's

} // namespace vorn::testing
