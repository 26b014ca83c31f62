#include "NimbrelExportKit/Archive/ExportJSON.h"

#include "NimbrelExportKit/Archive/JSONWriter.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace vorn {
namespace {

// Keys are written in the order given here, which must be sorted.

template <class Writer>
void write(Writer& to, const ExportedAttachment& attachment)
{
    to.raw(R"({"mimeType":)");
    to.text(attachment.mimeType);
    to.raw("}");
}

template <class Writer>
void write(Writer& to, const ExportedLink& link)
{
    to.raw(R"({"title":)");
    to.textOrNull(link.title);
    to.raw(R"(,"url":)");
    to.text(link.url);
    to.raw("}");
}

template <class Writer>
void write(Writer& to, const ExportedMessage& message)
{
    const auto element = [&to](const auto& value) { write(to, value); };
    to.raw(R"({"attachments":[)");
    to.list(message.attachments, element);
    to.raw(R"(],"chat":)");
    to.text(message.chat.view());
    to.raw(R"(,"edited":)");
    to.boolean(message.edited);
    to.raw(R"(,"fromMe":)");
    to.boolean(message.fromMe);
    to.raw(R"(,"guid":)");
    to.text(message.guid);
    to.raw(R"(,"links":[)");
    to.list(message.links, element);
    to.raw(R"(],"replyToGuid":)");
    to.textOrNull(message.replyToGuid);
    to.raw(R"(,"sentAt":)");
    to.integer(message.sentAt);
    to.raw(R"(,"service":)");
    to.textOrNull(message.service);
    to.raw(R"(,"text":)");
    to.text(message.text);
    to.raw("}");
}

template <class Writer>
void write(Writer& to, const ExporterInfo& exporter)
{
    to.raw(R"({"app":)");
    to.text(ExporterInfo::app);
    to.raw(R"(,"os":)");
    to.text(exporter.os);
    to.raw(R"(,"version":)");
    to.text(exporter.version);
    to.raw("}");
}

template <class Writer>
void write(Writer& to, const SkipTally& skipped)
{
    to.raw("{");
    to.list(skipped.counts, [&to](const auto& reasonAndCount) { // a map is sorted by the bytes of its keys
        to.text(reasonAndCount.first);
        to.raw(":");
        to.integer(reasonAndCount.second);
    });
    to.raw("}");
}

template <class Writer>
void write(Writer& to, const ExportManifest& manifest)
{
    to.raw(R"({"agentHandles":[)");
    to.list(manifest.agentHandles, [&to](const std::string& handle) { to.text(handle); });
    to.raw(R"(],"chatCount":)");
    to.integer(manifest.chatCount);
    to.raw(R"(,"exportedAt":)");
    to.text(manifest.exportedAt);
    to.raw(R"(,"exporter":)");
    write(to, manifest.exporter);
    to.raw(R"(,"format":)");
    to.text(ExportManifest::format);
    to.raw(R"(,"formatVersion":)");
    to.integer(ExportManifest::formatVersion);
    to.raw(R"(,"messageCount":)");
    to.integer(manifest.messageCount);
    to.raw(R"(,"skipped":)");
    write(to, manifest.skipped);
    to.raw("}");
}

} // namespace

ByteBuffer exportJSON(const ExportManifest& manifest)
{
    return json::document([&](auto& to) { write(to, manifest); });
}

ByteBuffer exportJSON(std::span<const ExportedMessage> messages)
{
    return json::document([&](auto& to) {
        to.raw("[");
        to.list(messages, [&](const ExportedMessage& message) { write(to, message); });
        to.raw("]");
    });
}

} // namespace vorn
