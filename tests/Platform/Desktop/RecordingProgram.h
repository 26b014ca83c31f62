#pragma once

#include "tests/support/TemporaryFolder.h"

#include <string>

#include <sched.h>

namespace vorn::testing {

/// A program that records its arguments, one per line, and then runs a given command.
class RecordingProgram {
public:
    explicit RecordingProgram(const std::string& then = "exit 0")
    {
        writeFile(path(), "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + record("new") + "'\nmv '" + record("new") + "' '" +
                              record("arguments") + "'\n" + then + "\n");
        std::filesystem::permissions(path(), std::filesystem::perms::owner_all);
    }

    std::string path() const { return folder_ / "program"; }
    const std::filesystem::path& folder() const { return folder_.path(); }

    bool wasStarted() const { return std::filesystem::exists(record("arguments")); }
    /// Waits until it was started.
    std::string arguments() const
    {
        while (!wasStarted()) sched_yield();
        return readFile(record("arguments"));
    }

private:
    std::string record(const char* name) const { return folder_ / name; }

    TemporaryFolder folder_;
};

} // namespace vorn::testing
