#pragma once

#include <string>

typedef struct _GDBusConnection GDBusConnection;
typedef struct _GMainContext GMainContext;

namespace vorn::testing {

/// A connection to a session bus, with blocking calls. Threads: the one that constructed it.
class BusConnection {
public:
    explicit BusConnection(const std::string& address);
    ~BusConnection();
    BusConnection(BusConnection&&) = delete;

    /// Returns once a program on the bus has this name.
    void waitForName(const std::string& name);

    /// Locks the collection of secrets at `path`.
    void lockSecrets(const std::string& path);

private:
    GMainContext* context_;
    GDBusConnection* connection_;
};

} // namespace vorn::testing
