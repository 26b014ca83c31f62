#pragma once

#include <memory>

namespace vorn {

/// A deleter that calls `function`.
template <auto function>
struct CallOnDelete {
    template <class Pointer>
    void operator()(Pointer* pointer) const noexcept
    {
        function(pointer);
    }
};

/// Owns an object of a C library and frees it with `release`: `Owned<GSettings, g_object_unref>`.
template <class Type, auto release>
using Owned = std::unique_ptr<Type, CallOnDelete<release>>;

} // namespace vorn
