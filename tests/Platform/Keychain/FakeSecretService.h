#pragma once

#include <atomic>
#include <memory>
#include <string>

namespace vorn::testing {

/// A Secret Service that returns one locked item for every search, with the faults of real ones, on a thread of its
/// own.
class FakeSecretService {
public:
    enum class Fault {
        silent,        ///< answers nothing
        hangingDialog, ///< shows a password dialog that is never answered and cannot be dismissed
        dismissed,     ///< the user closes the dialog
        refusing,      ///< denies access
    };

    /// Returns once the service is on the bus at `address`.
    FakeSecretService(const std::string& address, Fault fault);
    ~FakeSecretService();
    FakeSecretService(FakeSecretService&&) = delete;

    int dialogs() const;    ///< shown
    int dismissals() const; ///< requested
    /// The schema of the last search; empty before the first one.
    std::string searchedSchema() const;

    /// Returns once the program that asked for the last dialog has left the bus.
    void waitUntilAskerLeft();

private:
    class Service;
    std::unique_ptr<Service> service_;
};

} // namespace vorn::testing
