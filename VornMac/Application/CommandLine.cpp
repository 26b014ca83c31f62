#include "VornMac/Application/CommandLine.h"

#include "VornMac/Defaults/ArgumentDefaults.h"
#include "VornMacCore/Application/Application.h"

#include <algorithm>

namespace vorn {
namespace {

constexpr const char* help = "Usage: VornMac [-Key value]...\n"
                             "\n"
                             "Shares your Nimbrel chat from this computer. Without arguments, opens the window.\n"
                             "\n"
                             "  -VornAPIBaseURLOverride URL         the service to use, https or on this computer\n"
                             "  -VornMessagesDatabaseOverride FILE  the Messages database to read\n"
                             "  -VornAppearance light|dark          instead of the system's\n"
                             "  -VornReduceMotion YES|NO            instead of the system's\n"
                             "  -VornForgetsSession YES             keep the session for this run alone\n"
                             "  -VornSettingsFile FILE              keep settings there, and leave the user's alone\n"
                             "  --version                           print the version\n"
                             "  --help                              print this\n";

bool has(const std::vector<std::string>& arguments, const char* option)
{
    return std::ranges::find(arguments, option) != arguments.end();
}

} // namespace

CommandLine::CommandLine(int argc, char** argv) : arguments_(argv, argv + argc)
{
    defaults_ = ArgumentDefaults::takenFrom(arguments_).values();
    for (std::string& argument : arguments_) values_.push_back(argument.data());
    count_ = static_cast<int>(values_.size());
    values_.push_back(nullptr);
}

std::optional<std::string> CommandLine::answer() const
{
    if (has(arguments_, "--help") || has(arguments_, "-h")) return help;
    if (has(arguments_, "--version"))
        return "Vorn " + applicationBundle().text("CFBundleShortVersionString").value_or("") + "\n";
    return std::nullopt;
}

std::optional<std::string> CommandLine::unknown() const
{
    return count_ > 1 ? std::optional<std::string>(values_[1]) : std::nullopt;
}

} // namespace vorn
