#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include <gio/gio.h>

namespace vorn {

/// An interface of an object that a service offers on a bus.
struct BusObject {
    const char* service;
    const char* path;
    const char* interface;
};

/// A connection of our own to a message bus, made when it is first needed, and again after it is lost. No call blocks:
/// answers come from the default GLib main loop. A missing bus or service, or no answer in time, is reported as a null
/// answer. Threads: the one of that loop.
class MessageBus {
public:
    enum class Kind { session, system };

    /// `answer` is null if there is none; `files` is null if none came with it. Both are valid only during the call.
    using Answer = std::function<void(GVariant* answer, GUnixFDList* files)>;
    using Signal = std::function<void(const std::string& name, GVariant* arguments)>;

    static constexpr std::chrono::milliseconds defaultLimit{3000};

    /// `limit` is the time allowed for connecting, and for each call.
    explicit MessageBus(Kind kind, std::chrono::milliseconds limit = defaultLimit);
    /// After this, no answer or signal is delivered.
    ~MessageBus();
    MessageBus(MessageBus&&) = delete;

    /// Calls `method` with `arguments`, a floating tuple. Calls `then` once, with the answer.
    void call(const BusObject& object, const char* method, GVariant* arguments, Answer then);
    /// Sends a signal of `object`, whose service is ignored, to whoever listens.
    void emit(const BusObject& object, const char* signal, GVariant* arguments);
    /// From now on calls `heard` for each signal of `object` while connected. Does not connect by itself.
    void listen(const BusObject& object, Signal heard);

private:
    struct Link;
    std::shared_ptr<Link> link_;
};

} // namespace vorn
