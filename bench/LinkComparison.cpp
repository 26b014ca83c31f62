// Reads texts with the platform's link detector and with ours, and prints what each finds and how long it takes.
// Usage: bench-links TEXTS, such as bench/links.txt, whose first line describes the format.
#include "NimbrelExportKit/Links/LinkDetector.h"
#include "NimbrelExportKit/Links/TextLinkDetector.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace vorn {
namespace {

using Clock = std::chrono::steady_clock;

char meaning(char escaped)
{
    if (escaped == 'n') return '\n';
    return escaped == 't' ? '\t' : escaped;
}

std::string unescaped(std::string_view line)
{
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool escape = line[i] == '\\' && i + 1 < line.size();
        text += escape ? meaning(line[++i]) : line[i];
    }
    return text;
}

std::vector<std::string> linesOf(const char* path)
{
    std::vector<std::string> lines;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && !line.starts_with("# ")) lines.push_back(std::move(line));
    }
    return lines;
}

/// The web links, as the export keeps them.
std::vector<std::string> found(const LinkDetector& detector, const std::string& text)
{
    std::vector<std::string> urls;
    detector.find(text, urls);
    std::erase_if(urls, [](const std::string& url) { return !url.starts_with("http"); });
    return urls;
}

void show(const char* who, const std::vector<std::string>& urls)
{
    if (urls.empty()) fmt::print("    {:<8}nothing\n", who);
    for (const std::string& url : urls) fmt::print("    {:<8}{}\n", who, url);
}

/// Nanoseconds a text, the least of 15 rounds of at least 20 ms.
double cost(const LinkDetector& detector, const std::vector<std::string>& texts)
{
    double least = std::numeric_limits<double>::max();
    std::vector<std::string> urls;
    for (int round = 0; round < 15; ++round) {
        const auto begin = Clock::now();
        std::chrono::duration<double, std::nano> took{};
        std::size_t reads = 0;
        while (took < std::chrono::milliseconds(20)) {
            for (const std::string& text : texts) {
                urls.clear();
                detector.find(text, urls);
            }
            reads += texts.size();
            took = Clock::now() - begin;
        }
        least = std::min(least, took.count() / static_cast<double>(reads));
    }
    return least;
}

void compare(const std::vector<std::string>& lines)
{
    const std::unique_ptr<LinkDetector> platforms = LinkDetector::make();
    const TextLinkDetector ours;
    const bool hasOwn = platforms && !dynamic_cast<const TextLinkDetector*>(platforms.get());
    std::vector<std::string> texts;
    std::size_t different = 0, links = 0, bytes = 0;
    for (const std::string& line : lines) {
        const std::string& text = texts.emplace_back(unescaped(line));
        const auto here = found(ours, text);
        const auto theirs = hasOwn ? found(*platforms, text) : here;
        links += here.size();
        bytes += text.size();
        different += here != theirs;
        fmt::print("{} {}\n", here == theirs ? " " : "≠", line);
        if (here != theirs) show("system", theirs);
        show(!hasOwn || here != theirs ? "ours" : "both", here);
    }
    const auto size = static_cast<double>(bytes) / static_cast<double>(texts.size());
    fmt::print("\n{} texts of {:.0f} bytes on average; ours finds {} links\n", texts.size(), size, links);
    if (hasOwn) fmt::print("{} texts differ, marked ≠\n", different);
    if (hasOwn) fmt::print("system  {:6.0f} ns a text\n", cost(*platforms, texts));
    fmt::print("ours    {:6.0f} ns a text\n", cost(ours, texts));
    if (!hasOwn) fmt::print("This system has no detector of its own: nothing was compared.\n");
}

} // namespace
} // namespace vorn

int main(int argc, char** argv)
{
    const std::vector<std::string> lines = argc == 2 ? vorn::linesOf(argv[1]) : std::vector<std::string>();
    if (lines.empty()) {
        fmt::print(stderr, "Usage: bench-links TEXTS, a file with at least one text\n");
        return 2;
    }
    vorn::compare(lines);
    return 0;
}
