#pragma once

// Owners of GLib's objects, and waits for its callbacks. Only for the source files of this folder: GLib's headers
// conflict with Qt's.

#include "Platform/Base/Owned.h"

#include <chrono>

#include <gio/gio.h>

namespace vorn::glib {

template <class Type>
using Object = Owned<Type, g_object_unref>;
using Context = Owned<GMainContext, g_main_context_unref>;

inline void endSource(GSource* source) noexcept
{
    g_source_destroy(source);
    g_source_unref(source);
}
using Source = Owned<GSource, endSource>;

/// Receives an error from GLib.
class Failure {
public:
    Failure() = default;
    ~Failure() { g_clear_error(&error_); }
    Failure(Failure&&) = delete;

    GError** slot() { return &error_; }
    explicit operator bool() const { return error_ != nullptr; }

    bool is(GQuark domain, int code) const { return g_error_matches(error_, domain, code) != FALSE; }

private:
    GError* error_ = nullptr;
};

/// Gives the current thread a main context of its own and waits for callbacks on it. Threads: the one that constructed
/// it.
class Events {
public:
    Events() { g_main_context_push_thread_default(context_.get()); }
    ~Events()
    {
        bool more = true; // delivers what is pending
        while (more) more = g_main_context_iteration(context_.get(), FALSE) != FALSE;
        g_main_context_pop_thread_default(context_.get());
    }
    Events(Events&&) = delete;

    /// Calls `call` with `data` once, during a wait, when `time` has passed.
    Source after(std::chrono::milliseconds time, GSourceFunc call, gpointer data) const
    {
        Source source(g_timeout_source_new(static_cast<guint>(time.count())));
        g_source_set_callback(source.get(), call, data, nullptr);
        g_source_attach(source.get(), context_.get());
        return source;
    }

    /// Starts an asynchronous function and runs events until it calls back.
    template <class Start>
    Object<GAsyncResult> wait(Start start) const
    {
        GAsyncResult* result = nullptr;
        const GAsyncReadyCallback keep = [](GObject* /*source*/, GAsyncResult* given, gpointer data) {
            *static_cast<GAsyncResult**>(data) = G_ASYNC_RESULT(g_object_ref(given));
        };
        start(keep, static_cast<gpointer>(&result));
        while (result == nullptr) g_main_context_iteration(context_.get(), TRUE);
        return Object<GAsyncResult>(result);
    }

private:
    Context context_{g_main_context_new()};
};

} // namespace vorn::glib
