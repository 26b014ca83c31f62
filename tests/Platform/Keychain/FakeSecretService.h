#pragma once

#include <atomic>
#include <memory>
#include <string>

namespace vorn::testing {

/// A Secret Service with one locked item for every search, and with the faults of real ones. It runs on a thread of its
/// own.
class FakeSecretService {
public:
    enum class Fault {
        silent,        ///< answers nothing
        hangingDialog, ///< asks for a password that nobody gives, and cannot be told to stop
        dismissed,     ///< the user closes the dialog
        refusing,      ///< lets nobody in
    };

    /// Returns once the service is on the bus at `address`.
    FakeSecretService(const std::string& address, Fault fault);
    ~FakeSecretService();
    FakeSecretService(FakeSecretService&&) = delete;

    int dialogs() const;    ///< shown
    int dismissals() const; ///< asked for
    /// The schema of the items that were searched for last; empty while there was no search.
    std::string searchedSchema() const;

    /// Returns once the program that asked for the last dialog has left the bus.
    void waitUntilAskerLeft();

private:
    class Service;
    std::unique_ptr<Service> service_;
};

} // namespace vorn::testing
