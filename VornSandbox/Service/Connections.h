#pragma once

#include <vector>

namespace vorn::sandbox {

/// The connections that a server of this process has accepted, found among the process's descriptors: the server
/// library keeps them to itself, but faults must cut them, and a server that ends must not wait for idle ones. A
/// connection is known by the port that its client calls from. Threads: any.
class Connections {
public:
    explicit Connections(int localPort) : localPort_(localPort) {}

    std::vector<int> remotePorts() const;

    /// Cuts the one whose client calls from `remotePort`: nothing more is sent on it.
    void cut(int remotePort) const;
    void cutAll() const;

    /// Whether the client at `remotePort` has hung up.
    bool isClosedByClient(int remotePort) const;

private:
    int localPort_;
};

} // namespace vorn::sandbox
