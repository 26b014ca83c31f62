#pragma once

// Owners of GLib's objects and a wait for its calls back. GLib's headers do not go well with Qt's: for sources of this
// folder alone.

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

/// Receives what a function of GLib's failed with.
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

/// The events of one thread, which waits for calls back in the order of its steps. Threads: the one that made it.
class Events {
public:
    Events() { g_main_context_push_thread_default(context_.get()); }
    ~Events()
    {
        bool more = true; // of what was on its way
        while (more) more = g_main_context_iteration(context_.get(), FALSE) != FALSE;
        g_main_context_pop_thread_default(context_.get());
    }
    Events(Events&&) = delete;

    /// Calls `call` with `data` once, in the midst of a wait, when `time` has passed.
    Source after(std::chrono::milliseconds time, GSourceFunc call, gpointer data) const
    {
        Source source(g_timeout_source_new(static_cast<guint>(time.count())));
        g_source_set_callback(source.get(), call, data, nullptr);
        g_source_attach(source.get(), context_.get());
        return source;
    }

    /// Starts an asynchronous function and attends to this thread's events until it calls back.
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
