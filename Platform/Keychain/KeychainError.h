#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace vorn {

/// A failure of the keychain. Codes are those of macOS's Security framework; other systems use the ones below.
class KeychainError : public std::exception {
public:
    static constexpr std::int32_t parameter = -50;                ///< the request is invalid
    static constexpr std::int32_t userCanceled = -128;            ///< the user dismissed the dialog
    static constexpr std::int32_t notAvailable = -25291;          ///< no keychain here, or it does not answer
    static constexpr std::int32_t authFailed = -25293;            ///< access was refused to this program
    static constexpr std::int32_t duplicateItem = -25299;         ///< the item already exists
    static constexpr std::int32_t itemNotFound = -25300;          ///< there is no such item
    static constexpr std::int32_t interactionNotAllowed = -25308; ///< locked, and the user could not be asked in time
    static constexpr std::int32_t decode = -26275;                ///< what was found is not a secret
    static constexpr std::int32_t missingEntitlement = -34018;    ///< the program's signature lacks what this needs

    explicit KeychainError(std::int32_t status);

    std::int32_t status() const noexcept { return status_; }

    /// "keychain error -25300 (there is no such item)"; only the number for codes other than those above.
    const char* what() const noexcept override { return text_.c_str(); }

    bool operator==(const KeychainError& other) const noexcept { return status_ == other.status_; }

private:
    std::int32_t status_;
    std::string text_;
};

} // namespace vorn
