#pragma once

namespace vorn::bench {

/// Shows the application's window or, with `bare`, a Qt Quick window with a line of text: the least that any
/// application of this kind costs. Prints when the first frame was shown, in nanoseconds of the steady clock, and half
/// a second later the most memory that the process has held, in bytes. Returns the exit status.
int showWindow(bool bare, int argc, char** argv);

} // namespace vorn::bench
