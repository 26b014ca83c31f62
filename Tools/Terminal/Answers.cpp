#include "Tools/Terminal/Answers.h"

#include "Platform/Base/ASCII.h"

#include <cerrno>

#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace vorn {
namespace {

/// Waits for input and polls `cancel`: nothing else ends the wait for a user.
void waitForInput(int input, const CancelFlag& cancel)
{
    pollfd readable{input, POLLIN, 0};
    constexpr int milliseconds = 50;
    while (poll(&readable, 1, milliseconds) <= 0) cancel.check();
}

/// The next line, without its newline; nothing at the end of the input. Reads byte by byte: what follows is for the
/// next question, or for another program.
std::optional<std::string> readLine(int input, const CancelFlag& cancel)
{
    std::string line;
    while (true) {
        waitForInput(input, cancel);
        char letter = 0;
        const ssize_t count = read(input, &letter, 1);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return line.empty() ? std::nullopt : std::optional(line);
        if (letter == '\n') return line;
        line += letter;
    }
}

bool isYes(std::string answer)
{
    std::erase_if(answer, [](char c) { return c == ' ' || c == '\t' || c == '\r'; });
    return ascii::equalIgnoringCase(answer, "y") || ascii::equalIgnoringCase(answer, "yes");
}

} // namespace

Async<bool> Answers::confirms(std::string question)
{
    tcflush(input_, TCIFLUSH); // on a terminal: what was typed earlier does not answer this question
    terminal_->say(question + " [y/N]");
    const auto read = [input = input_](const CancelFlag& cancel) { return readLine(input, cancel); };
    const std::optional<std::string> answer = co_await onBackground(background_, read);
    co_return answer&& isYes(*answer);
}

} // namespace vorn
