#pragma once

#include "tests/support/Program.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <memory>
#include <string>

namespace vorn::testing {

/// A session bus for the test, named in the environment. Starts no services. Ends with this object, even when the test
/// program crashes.
class TestBus {
public:
    TestBus();

    const std::string& address() const { return address_; }

    /// The folder of its socket, called "bus".
    const std::filesystem::path& folder() const { return folder_.path(); }

    /// From now on, accepts connections and never answers.
    void freeze() const;

private:
    TemporaryFolder folder_;
    std::unique_ptr<Program> daemon_;
    std::string address_;
    std::unique_ptr<ScopedEnvironment> variable_;
};

/// The desktop's own keyring on a bus, with an unlocked collection and a home of its own. It ends with its bus at the
/// latest.
class TestKeyring {
public:
    /// Returns once the service is on the bus.
    explicit TestKeyring(const TestBus& bus);

    /// Locks the collection; no password dialog can be shown here.
    void lock() const;

private:
    const TestBus& bus_;
    TemporaryFolder home_;
    std::unique_ptr<Program> daemon_;
};

} // namespace vorn::testing
