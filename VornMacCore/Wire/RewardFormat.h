#pragma once

#include <optional>
#include <string>

/// Amounts of money as users read them, the same in every locale. Threads: any.
namespace vorn::RewardFormat {

/// "$" and `amount` in dollars with two decimals, rounded as `printf` rounds; no thousands separators, and a minus sign
/// stands after the dollar sign: "$-1.50".
std::string usd(double amount);

/// As above; absent for an absent amount.
std::optional<std::string> usd(const std::optional<double>& amount);

/// As above, for an amount in text; absent unless all of it is a decimal number as C writes one: an
/// optional sign, digits with at most one ".", an optional exponent ("12", "12.50", ".5", "+1", "1e3"). White space,
/// other characters, hexadecimal, "inf", "nan" and a number beyond a double's range are refused.
std::optional<std::string> usd(const std::optional<std::string>& amount);

/// The amount in a text such as `usd` writes: "$", then a decimal number as above; absent for any other text.
std::optional<double> dollars(const std::string& text);

} // namespace vorn::RewardFormat
