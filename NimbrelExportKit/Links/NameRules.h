#pragma once

#include "NimbrelExportKit/Links/HostName.h"

#include <string_view>

namespace vorn::links {

/// A host without a scheme, among the words of a message.
struct BareName {
    std::string_view text;
    std::string_view before; ///< the text before it
    std::string_view after;  ///< the text after the host
    Host host;
    bool hasPath = false; ///< a path, query or fragment follows
};

/// Whether a reader takes `name` for an address. Many words with a dot are not addresses, although they end with an
/// existing top-level domain: "main.rs", "10.30.am", "version 1.2.3.4", "Yes.It works", "com.example.app".
/// Threads: any.
bool isAddress(const BareName& name);

} // namespace vorn::links
