#include "tests/support/log/CapturedLog.h"

#include <mutex>
#include <utility>

namespace vorn::testing {

class CapturedLog::Sink : public LogSink {
public:
    explicit Sink(std::shared_ptr<LogSink> next) : next_(std::move(next)) {}

    void write(std::string_view subsystem, std::string_view category, std::string_view line) override
    {
        {
            const std::lock_guard lock(mutex_);
            lines_.push_back("[" + std::string(category) + "] " + std::string(line));
        }
        if (next_) next_->write(subsystem, category, line);
    }

    std::vector<std::string> lines() const
    {
        const std::lock_guard lock(mutex_);
        return lines_;
    }

    const std::shared_ptr<LogSink>& next() const { return next_; }

private:
    mutable std::mutex mutex_; // guards `lines_`
    std::vector<std::string> lines_;
    std::shared_ptr<LogSink> next_;
};

CapturedLog::CapturedLog() : sink_(std::make_shared<Sink>(currentLogSink()))
{
    setLogSink(sink_);
}

CapturedLog::~CapturedLog()
{
    setLogSink(sink_->next());
}

std::vector<std::string> CapturedLog::lines() const
{
    return sink_->lines();
}

} // namespace vorn::testing
