#include "NimbrelExportKit/Links/CandidateScan.h"
#include "NimbrelExportKit/Links/TextLinkDetector.h"

#include <array>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

namespace vorn {
namespace {

constexpr std::size_t messageCount = 4096;

constexpr std::array<std::string_view, 24> words = {
    "I",     "think", "we",    "should", "go",    "to",      "the", "market", "tomorrow", "morning.", "Can",  "you",
    "bring", "some",  "bread", "and",    "milk?", "Thanks,", "see", "you",    "at",       "9:30",     "haha", "ok..."};
constexpr std::array<std::string_view, 8> foreignWords = {"😂😂",    "👍🏽",    "ありがとう。", "明日会いましょう",
                                                          "привет,", "спасибо", "שלום",         "مرحبا"};
constexpr std::array<std::string_view, 8> linkWords = {
    "https://www.example.com/watch?v=dQw4w9WgXcQ",
    "https://news.example.co.uk/2026/03/01/weather-report_final(1).html",
    "example.org",
    "www.example.net/menu",
    "https://maps.example.com/maps/@48.8583701,2.2944813,17z?hl=fr",
    "http://192.168.1.20:8080/status",
    "https://ja.example.org/wiki/東京タワー",
    "https://example.com/a/b/c#section-3"};
constexpr std::array<std::string_view, 4> nearMisses = {"readme.md", "v2.10.3", "anna.smith@example.com", "e.g."};

template <std::size_t n>
std::string_view pick(const std::array<std::string_view, n>& from, std::mt19937& random)
{
    return from[random() % n];
}

/// Chat messages: 120 bytes on average, a link in 8 of 100, something in another script or an emoji in 20 of 100.
std::vector<std::string> chatMessages()
{
    std::mt19937 random(20260301); // NOLINT: the same corpus every run
    std::vector<std::string> messages;
    for (std::size_t i = 0; i < messageCount; ++i) {
        const std::size_t size = 20 + random() % 195;
        const bool foreign = random() % 100 < 20;
        const bool dotted = random() % 100 < 5;
        std::string message;
        if (random() % 100 < 8) message.append(pick(linkWords, random)).append(" ");
        if (dotted) message.append(pick(nearMisses, random)).append(" ");
        while (message.size() < size) {
            message.append(foreign && random() % 4 == 0 ? pick(foreignWords, random) : pick(words, random)).append(" ");
        }
        messages.push_back(std::move(message));
    }
    return messages;
}

void countMessages(benchmark::State& state, const std::vector<std::string>& messages)
{
    std::size_t bytes = 0;
    for (const std::string& message : messages) bytes += message.size();
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(messages.size()));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    state.counters["per message"] =
        benchmark::Counter(static_cast<double>(messages.size()),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["bytes/message"] = static_cast<double>(bytes) / static_cast<double>(messages.size());
}

void findLinks(benchmark::State& state)
{
    const std::vector<std::string> messages = chatMessages();
    const TextLinkDetector detector;
    std::vector<std::string> urls;
    std::size_t withLinks = 0;
    while (state.KeepRunning()) {
        withLinks = 0;
        for (const std::string& message : messages) {
            urls.clear();
            detector.find(message, urls);
            withLinks += urls.empty() ? 0 : 1;
        }
        benchmark::DoNotOptimize(withLinks);
    }
    countMessages(state, messages);
    state.counters["with links %"] = 100.0 * static_cast<double>(withLinks) / static_cast<double>(messages.size());
}
BENCHMARK(findLinks);

/// The search for the first candidate: the whole cost of a message that holds none.
void scanForCandidates(benchmark::State& state)
{
    const std::vector<std::string> messages = chatMessages();
    while (state.KeepRunning()) {
        for (const std::string& message : messages) benchmark::DoNotOptimize(links::nextCandidate(message, 0));
    }
    countMessages(state, messages);
}
BENCHMARK(scanForCandidates);

/// The filter in front of the system's detector, and the share of messages that it lets through.
void scanForMarks(benchmark::State& state)
{
    const std::vector<std::string> messages = chatMessages();
    std::size_t marked = 0;
    while (state.KeepRunning()) {
        marked = 0;
        for (const std::string& message : messages) marked += links::mayHoldLink(message) ? 1 : 0;
        benchmark::DoNotOptimize(marked);
    }
    countMessages(state, messages);
    state.counters["with marks %"] = 100.0 * static_cast<double>(marked) / static_cast<double>(messages.size());
}
BENCHMARK(scanForMarks);

std::string repeated(std::string_view piece, std::size_t size)
{
    std::string text;
    while (text.size() < size) text += piece;
    text.resize(size);
    return text;
}

/// Text that makes careless detectors read the same bytes again and again. The fitted complexity must stay O(N).
void findLinksInHostileText(benchmark::State& state, std::string_view head, std::string_view piece)
{
    const std::string text = std::string(head) + repeated(piece, static_cast<std::size_t>(state.range(0)));
    const TextLinkDetector detector;
    std::vector<std::string> urls;
    while (state.KeepRunning()) {
        urls.clear();
        detector.find(text, urls);
        benchmark::DoNotOptimize(urls.data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

#define HOSTILE(name, head, piece)                                                                                     \
    BENCHMARK_CAPTURE(findLinksInHostileText, name, std::string_view(head), std::string_view(piece))                   \
        ->RangeMultiplier(4)                                                                                           \
        ->Range(1 << 14, 1 << 20)                                                                                      \
        ->Complexity(benchmark::oN)
HOSTILE(letters, "", "a");
HOSTILE(openBrackets, "http://a.com/", "(");
HOSTILE(nestedOpenLinks, "", "a.com/(");
HOSTILE(labels, "", "a.");
HOSTILE(labelsThenScheme, "", "a.a.a.a.http://");
HOSTILE(schemes, "", "http://");
HOSTILE(userNames, "", "http://a:,");
HOSTILE(refusedHosts, "", "http://a_b.c_d/(");
HOSTILE(fullStops, "http://a.com/", ".");
HOSTILE(quotationMarks, "http://a.com/", "a\"");
HOSTILE(entities, "http://a.com/", "&a;");
HOSTILE(emoji, "http://a.com/a", "😀");
HOSTILE(japanese, "http://a.com/", "あ");
HOSTILE(japaneseLinks, "", "a.comあ");
HOSTILE(localParts, "", "a.com+");
HOSTILE(localHosts, "", "localhost:1");
HOSTILE(titles, "http://a.com/b/", "《あ");
HOSTILE(sentences, "", "a.com.Then'");
HOSTILE(foreignUsers, "", "http://é:");
HOSTILE(schemesInSchemes, "", "x://http://é");
HOSTILE(refusedNames, "", "_x.com/,");
HOSTILE(refusedAddresses, "", "?_1.2.3.4/");

} // namespace
} // namespace vorn
