#include "Tools/Export/ExportOptions.h"
#include "Tools/Manual/CommandDescription.h"
#include "Tools/Manual/Completions.h"
#include "Tools/Manual/ManualPage.h"
#include "Tools/Terminal/TerminalOptions.h"
#include "VornMac/Application/CommandLine.h"
#include "VornMac/Composition/OverrideKeys.h"
#include "VornSandbox/SampleHistory/SampleHistoryCommandLine.h"
#include "VornSandbox/Service/ServiceOptions.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace vorn {
namespace {

namespace fs = std::filesystem;

/// Adds the keys that override user defaults: CLI11, which reads the other options, does not know them.
void addOverrides(CommandDescription& program, overrides::Program which)
{
    for (const overrides::Key& key : overrides::keysOf(which)) {
        program.options.push_back({.names = {"-" + std::string(key.name)},
                                   .help = key.help,
                                   .valueName = key.value,
                                   .value = valueCalled(key.value)});
    }
}

std::vector<CommandDescription> allPrograms()
{
    std::vector<CommandDescription> programs;
    const auto add = [&](const CLI::App& app) { programs.push_back(describe(app)); };
    describeExportOptions(add);
    describeTerminalOptions(add);
    addOverrides(programs.back(), overrides::Program::terminal);
    sandbox::ServiceOptions::describe(add);
    SampleHistoryCommandLine::describe(add);
    CLI::App window(CommandLine::purpose, "VornMac");
    window.set_version_flag("--version");
    add(window);
    addOverrides(programs.back(), overrides::Program::window);
    return programs;
}

void write(const fs::path& path, const std::string& text)
{
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.exceptions(std::ios::failbit | std::ios::badbit);
    file << text << std::flush;
}

/// Uses the folders below `share` in which Debian's shells and man look.
void writeAll(const CommandDescription& program, const fs::path& share)
{
    write(share / "man/man1" / (program.name + ".1"), manualPage(program, VORN_VERSION));
    write(share / "bash-completion/completions" / program.name, bashCompletion(program));
    write(share / "zsh/vendor-completions" / ("_" + program.name), zshCompletion(program));
    write(share / "fish/vendor_completions.d" / (program.name + ".fish"), fishCompletion(program));
}

} // namespace
} // namespace vorn

/// vorn-manual FOLDER PROGRAM…
int main(int argc, char** argv)
try {
    const std::vector<std::string> names(argv + (argc < 2 ? argc : 2), argv + argc);
    std::size_t written = 0;
    for (const vorn::CommandDescription& program : vorn::allPrograms()) {
        if (std::find(names.begin(), names.end(), program.name) == names.end()) continue;
        vorn::writeAll(program, argv[1]);
        ++written;
    }
    if (written == names.size() && written > 0) return 0;
    std::fputs("Usage: vorn-manual FOLDER PROGRAM...\n", stderr);
    return 2;
} catch (const std::exception& error) {
    std::fprintf(stderr, "vorn-manual: %s\n", error.what());
    return 1;
}
