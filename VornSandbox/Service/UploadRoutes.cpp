#include "VornSandbox/Service/UploadRoutes.h"

#include "VornSandbox/Service/APIChecks.h"
#include "VornSandbox/Service/ServiceError.h"

#include <fmt/format.h>

namespace vorn::sandbox {
namespace {

void checkPartFrame(const Call& call, std::int64_t size)
{
    refuseToken(call);
    if (call.header("content-type") != nullptr) {
        throw ServiceError(400, "unexpected_content_type", "A part has no Content-Type.");
    }
    const auto length = call.contentLength();
    if (call.header("transfer-encoding") != nullptr || !length) {
        throw ServiceError(411, "missing_length", "A part comes with its Content-Length, not in chunks.");
    }
    if (*length != size) {
        throw ServiceError(400, "wrong_part_size", fmt::format("The part has {} bytes, not {}.", size, *length));
    }
}

// PUT /uploads/<asset>/<part>?expires=…&signature=…
Answer putPart(Backend& backend, const Call& call, const Router::Arguments& arguments)
{
    const auto expected = backend.submissions.expectPart(arguments[0], arguments[1], call.queryValue("expires"),
                                                         call.queryValue("signature"));
    checkPartFrame(call, expected.size);
    const auto part = backend.submissions.receive(expected);
    if (expected.size > 0) call.readBody([&](std::string_view piece) { part->write(piece); });
    if (part->size() != expected.size) throw ServiceError(400, "wrong_part_size", "The part broke off.");
    return {.contentType = "text/plain", .headers = {{"ETag", backend.submissions.keep(expected, *part)}}};
}

} // namespace

void addUploadRoutes(Router& router, Backend& backend)
{
    router.add("put-part", "PUT", "/uploads/*/*", [&backend](const Call& call, const Router::Arguments& arguments) {
        return putPart(backend, call, arguments);
    });
}

} // namespace vorn::sandbox
