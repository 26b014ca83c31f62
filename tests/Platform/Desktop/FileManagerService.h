#pragma once

#include <future>
#include <string>
#include <thread>

typedef struct _GMainContext GMainContext;
typedef struct _GMainLoop GMainLoop;

namespace vorn::testing {

/// A file manager on a session bus that records what it is asked to show.
class FileManagerService {
public:
    /// Returns once it is on the bus.
    explicit FileManagerService(const std::string& address);
    ~FileManagerService();
    FileManagerService(FileManagerService&&) = delete;

    /// Waits for the first item that it is asked to show, and returns it.
    std::string shownItem() { return shown_.get_future().get(); }

private:
    void run(const std::string& address, std::promise<void>& ready);

    GMainContext* context_;
    GMainLoop* loop_;
    std::promise<std::string> shown_;
    std::thread thread_;
};

} // namespace vorn::testing
