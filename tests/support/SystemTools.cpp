#include "tests/support/SystemTools.h"

#include "tests/support/Program.h"

#include <stdexcept>

namespace vorn::testing::systemTools {
namespace {

/// The line that `script` prints.
std::string lineOf(const std::string& script)
{
    Program shell("/bin/sh", {"-c", script});
    if (const int code = shell.exitCode(); code != 0)
        throw std::runtime_error("a shell ended with " + std::to_string(code) + ": " + shell.errors());
    const std::string printed = shell.output();
    return printed.substr(0, printed.find('\n'));
}

} // namespace

std::string osVersion()
{
    return "macOS " + lineOf(R"sh(
        if [ "$(uname)" = Darwin ]; then sw_vers -productVersion; else uname -r; fi |
            sed -E -e 's/^([0-9]+\.[0-9]+(\.[0-9]+)?).*/\1/' -e 's/^([0-9]+\.[0-9]+)\.0$/\1/')sh");
}

std::string computerName()
{
    return lineOf(R"sh(
        if [ "$(uname)" = Darwin ]; then exec scutil --get ComputerName; fi
        if [ -r /etc/machine-info ]; then . /etc/machine-info; fi
        echo "${PRETTY_HOSTNAME:-$(uname -n)}")sh");
}

} // namespace vorn::testing::systemTools
