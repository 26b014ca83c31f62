#pragma once

namespace vorn {

/// Whether this machine is on any network: an interface other than the loopback is up and has an address that reaches
/// beyond its own cable. A name that is not found then tells of a wrong name, and otherwise of being offline.
bool isOnNetwork() noexcept;

} // namespace vorn
