#pragma once

namespace vorn {

/// Whether an interface other than loopback is up with more than a link-local address. Distinguishes an unknown host
/// from being offline.
bool isOnNetwork() noexcept;

} // namespace vorn
