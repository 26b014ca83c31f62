#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

/// A made-up history to measure with: the same on every run and every machine.
namespace vorn::bench {

/// Makes messages of about 120 characters out of a vocabulary in which few words are frequent, as in a language.
class SampleWriter {
public:
    /// Puts the texts into `arena`, as a reader does.
    ExportedMessage next(std::size_t index, TextArena& arena)
    {
        ExportedMessage message;
        message.rowID = static_cast<std::int64_t>(index) + 1;
        message.sentAt = 1'700'000'000 + static_cast<std::int64_t>(index) * 40;
        message.guid = arena.keep(uuid());
        message.chat = arena.keep("iMessage;-;nimbrel@example.org");
        message.service = arena.keep("iMessage");
        message.fromMe = index % 2 == 0;
        message.edited = index % 50 == 7;
        std::string body = text();
        if (index % 12 == 5) body += " " + addLink(message);
        message.text = arena.keep(body);
        if (index % 20 == 3) message.replyToGuid = arena.keep(uuid());
        if (index % 25 == 9) message.attachments.push_back({"image/jpeg"});
        return message;
    }

private:
    std::string uuid()
    {
        static constexpr std::string_view digits = "0123456789ABCDEF";
        std::string text = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
        for (char& at : text) {
            if (at == 'x') at = digits[random_() % digits.size()];
        }
        return text;
    }

    std::string word()
    {
        static constexpr std::array syllables{"ta",  "mi", "ron", "el", "su", "ka",  "lé", "no",
                                              "pri", "da", "ver", "o",  "in", "sch", "ü",  "tle"};
        // The cube of a uniform number favours small codes, those of the frequent words.
        const double uniform = static_cast<double>(random_() % 100'000) / 100'000.0;
        std::size_t code = static_cast<std::size_t>(std::pow(uniform, 3.0) * 16'000.0) + 1;
        std::string text;
        for (; code > 0; code /= syllables.size()) text += syllables[code % syllables.size()];
        return text;
    }

    std::string text()
    {
        const std::size_t length = 20 + random_() % 200;
        std::string text = word();
        while (text.size() < length) {
            text += random_() % 9 == 0 ? ", " : " ";
            text += word();
        }
        switch (random_() % 10) {
        case 0: return text + " \U0001F600";
        case 1: return text + "\n" + word();
        case 2: return "\"" + text + "\"";
        case 3: return text + "?";
        default: return text + ".";
        }
    }

    std::string addLink(ExportedMessage& message)
    {
        const std::string url = "https://example.org/" + word() + "/" + std::to_string(random_() % 100'000);
        message.links.push_back({url, {}});
        return url;
    }

    std::mt19937 random_{20'260'301};
};

inline NimbrelExportResult sampleExport(std::size_t messageCount)
{
    NimbrelExportResult result;
    result.chats = {{1, "iMessage;-;nimbrel@example.org", "nimbrel@example.org", "iMessage"}};
    result.skipped.counts = {{"empty", 12}, {"reaction", 3'456}};
    result.messages.reserve(messageCount);
    SampleWriter writer;
    for (std::size_t i = 0; i < messageCount; ++i) {
        result.messages.push_back(writer.next(i, result.messages.arena()));
    }
    return result;
}

} // namespace vorn::bench
