#pragma once

namespace vorn::bench {

/// Shows the window of the application, or with `bare` one of Qt Quick with a line of text, which is the least that any
/// application of this kind costs. Prints when its first frame was shown, in nanoseconds of the steady clock, and half
/// a second later the most memory that the process has held, in bytes. Returns the exit status.
int showWindow(bool bare, int argc, char** argv);

} // namespace vorn::bench
