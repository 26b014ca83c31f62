#include "tests/support/PseudoTerminal.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace vorn::testing {
namespace {

std::string openLine(int terminal)
{
    std::array<char, 128> name{};
    if (grantpt(terminal) != 0 || unlockpt(terminal) != 0 || ptsname_r(terminal, name.data(), name.size()) != 0)
        throw std::runtime_error("no terminal");
    return name.data();
}

} // namespace

PseudoTerminal::PseudoTerminal()
    : keyboardAndScreen_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)), path_(openLine(keyboardAndScreen_.get())),
      line_(open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC))
{
    winsize size{};
    size.ws_row = 24;
    size.ws_col = 80;
    if (!line_ || ioctl(line_.get(), TIOCSWINSZ, &size) != 0) throw std::runtime_error("no terminal");
    reader_ = std::thread([this] { read(); });
}

PseudoTerminal::~PseudoTerminal()
{
    closed_ = true;
    reader_.join();
}

void PseudoTerminal::type(std::string_view keys) const
{
    if (write(keyboardAndScreen_.get(), keys.data(), keys.size()) != static_cast<ssize_t>(keys.size()))
        throw std::runtime_error("cannot type");
}

std::string PseudoTerminal::shown() const
{
    const std::lock_guard lock(mutex_);
    return shown_;
}

/// Reads continuously: otherwise a program that writes more than the system buffers would block.
void PseudoTerminal::read()
{
    constexpr int milliseconds = 20;
    std::array<char, 4096> bytes{};
    while (!closed_) {
        pollfd readable{keyboardAndScreen_.get(), POLLIN, 0};
        if (poll(&readable, 1, milliseconds) <= 0) continue;
        const ssize_t count = ::read(keyboardAndScreen_.get(), bytes.data(), bytes.size());
        if (count <= 0) return;
        const std::lock_guard lock(mutex_);
        shown_.append(bytes.data(), static_cast<std::size_t>(count));
    }
}

} // namespace vorn::testing
