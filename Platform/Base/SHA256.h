#pragma once

#include "Platform/Base/Bytes.h"
#include "Platform/Base/CancelFlag.h"

#include <array>
#include <filesystem>
#include <memory>
#include <string>

namespace vorn {

/// SHA-256 (FIPS 180-4) of bytes that arrive piece by piece.
class SHA256 {
public:
    SHA256();
    ~SHA256();
    SHA256(SHA256&&) noexcept;
    SHA256& operator=(SHA256&&) noexcept;

    void update(ByteView bytes);

    /// The digest of everything so far as 64 lower-case hexadecimal digits. Call it once, last.
    std::string hexDigest();

    /// The digest of a file's content, read in pieces of 1 MiB. Throws `std::filesystem::filesystem_error`, and
    /// `Cancelled` once `cancel` is raised.
    static std::string hexDigestOfFile(const std::filesystem::path& path, const CancelFlag* cancel = nullptr);

private:
    struct Context; // the system's own
    using Digest = std::array<unsigned char, 32>;

    Digest digest();

    std::unique_ptr<Context> context_;
};

} // namespace vorn
