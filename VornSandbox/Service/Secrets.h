#pragma once

#include <string>
#include <string_view>

/// Random names and what is kept of secrets. Threads: any.
namespace vorn::sandbox {

/// `prefix` and 32 random hexadecimal digits, such as "sub_0a1b…": unique, but nothing to keep secret.
std::string newIdentifier(std::string_view prefix);

/// 64 random hexadecimal digits (244 random bits).
std::string newSecret();

/// What is stored of a secret, so that a copy of the state opens nothing.
std::string hashOf(std::string_view secret);

/// HMAC-SHA-256 (RFC 2104) as 64 lower-case hexadecimal digits.
std::string hmacSHA256(std::string_view key, std::string_view message);

/// Compares in a time that does not tell where the two differ.
bool equalInConstantTime(std::string_view one, std::string_view other) noexcept;

} // namespace vorn::sandbox
