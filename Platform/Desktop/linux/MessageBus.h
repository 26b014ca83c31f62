#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include <gio/gio.h>

namespace vorn {

/// Where a method of a service on a bus is found.
struct BusObject {
    const char* service;
    const char* path;
    const char* interface;
};

/// A connection of our own to a message bus, made when it is first needed, and again after it is lost. Nothing is
/// waited for: answers come from the default GLib main loop. Where there is no bus, no service, or no answer in time,
/// that is an answer too. Threads: the one of that loop.
class MessageBus {
public:
    enum class Kind { session, system };

    /// Null where there is no answer; `files` are null where none came along. Both are borrowed.
    using Answer = std::function<void(GVariant* answer, GUnixFDList* files)>;
    using Signal = std::function<void(const std::string& name, GVariant* arguments)>;

    static constexpr std::chrono::milliseconds defaultLimit{3000};

    /// `limit` is for the connection, and for each call.
    explicit MessageBus(Kind kind, std::chrono::milliseconds limit = defaultLimit);
    /// No answer or signal comes after.
    ~MessageBus();
    MessageBus(MessageBus&&) = delete;

    /// Calls `method` with `arguments`, a floating tuple, and `then` once.
    void call(const BusObject& object, const char* method, GVariant* arguments, Answer then);
    /// Sends a signal of `object`, whose service is ignored, to whoever listens.
    void emit(const BusObject& object, const char* signal, GVariant* arguments);
    /// Calls `heard` for each signal of `object` from now on.
    void listen(const BusObject& object, Signal heard);

private:
    struct Link;
    std::shared_ptr<Link> link_;
};

} // namespace vorn
