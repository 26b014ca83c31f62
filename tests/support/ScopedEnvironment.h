#pragma once

#include <optional>
#include <string>

#include <stdlib.h>

namespace vorn::testing {

/// Sets an environment variable while it lives.
class ScopedEnvironment {
public:
    ScopedEnvironment(std::string name, const std::string& value) : name_(std::move(name))
    {
        if (const char* old = getenv(name_.c_str())) old_ = old;
        setenv(name_.c_str(), value.c_str(), 1);
    }
    ~ScopedEnvironment()
    {
        if (old_)
            setenv(name_.c_str(), old_->c_str(), 1);
        else
            unsetenv(name_.c_str());
    }
    ScopedEnvironment(ScopedEnvironment&&) = delete;

private:
    std::string name_;
    std::optional<std::string> old_;
};

} // namespace vorn::testing
