#include "VornSandbox/Service/Secrets.h"

#include "Platform/Base/Bytes.h"
#include "Platform/Base/SHA256.h"
#include "Platform/Base/UUID.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vorn::sandbox {
namespace {

constexpr std::size_t blockSize = 64; // of SHA-256, in bytes

std::string randomDigits()
{
    std::string digits = newUUID();
    std::erase(digits, '-');
    std::ranges::transform(digits, digits.begin(),
                           [](char c) { return c >= 'A' && c <= 'F' ? char(c - 'A' + 'a') : c; });
    return digits;
}

unsigned nibble(char digit)
{
    return static_cast<unsigned>(digit <= '9' ? digit - '0' : digit - 'a' + 10);
}

std::string bytesOfHex(std::string_view hex)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        bytes.push_back(static_cast<char>((nibble(hex[i]) << 4U) | nibble(hex[i + 1])));
    }
    return bytes;
}

std::string padded(std::string_view key, unsigned char with)
{
    std::string block(blockSize, '\0');
    const std::string shortened = key.size() > blockSize ? bytesOfHex(hashOf(key)) : std::string(key);
    std::ranges::copy(shortened, block.begin());
    std::ranges::transform(block, block.begin(),
                           [with](char c) { return static_cast<char>(static_cast<unsigned char>(c) ^ with); });
    return block;
}

} // namespace

std::string newIdentifier(std::string_view prefix)
{
    return std::string(prefix) + randomDigits();
}

std::string newSecret()
{
    return randomDigits() + randomDigits();
}

std::string hashOf(std::string_view secret)
{
    SHA256 hash;
    hash.update(bytesOf(secret));
    return hash.hexDigest();
}

std::string hmacSHA256(std::string_view key, std::string_view message)
{
    const std::string inner = hashOf(padded(key, 0x36) + std::string(message));
    return hashOf(padded(key, 0x5c) + bytesOfHex(inner));
}

bool equalInConstantTime(std::string_view one, std::string_view other) noexcept
{
    if (one.size() != other.size()) return false;
    unsigned difference = 0;
    for (std::size_t i = 0; i < one.size(); ++i) {
        difference |= static_cast<unsigned char>(one[i]) ^ static_cast<unsigned>(static_cast<unsigned char>(other[i]));
    }
    return difference == 0;
}

} // namespace vorn::sandbox
