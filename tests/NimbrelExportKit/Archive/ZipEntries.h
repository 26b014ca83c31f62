#pragma once

#include "NimbrelExportKit/Archive/ZipWriter.h"
#include "tests/NimbrelExportKit/Archive/ArchiveReader.h"

#include <chrono>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <vector>

/// Entries to archive, and the archive made of them.
namespace vorn::testing {

using namespace std::chrono_literals;

inline const Instant someTime = std::chrono::sys_days(2026y / std::chrono::March / 1) + 9h + 15min;

inline ZipEntry entry(std::string name, std::string_view data, Instant modified = someTime)
{
    return {std::move(name), bytesOf(data), modified};
}

inline ByteBuffer archiveOf(const std::vector<ZipEntry>& entries, const ZipWriter::Settings& settings = {})
{
    return ZipWriter::archive(entries, settings);
}

inline ArchivedFile readBack(const ZipEntry& one)
{
    ReadArchive archive = readArchive(archiveOf({one}));
    EXPECT_EQ(archive.files.size(), 1U);
    return std::move(archive.files.at(0));
}

inline std::string noise(std::size_t size)
{
    std::mt19937 random(11);
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    return bytes;
}

/// The failure of archiving `entries`; nothing when it succeeds.
inline std::optional<ZipWriterError> failure(const std::vector<ZipEntry>& entries,
                                             const ZipWriter::Settings& settings = {})
{
    try {
        archiveOf(entries, settings);
    } catch (const ZipWriterError& error) {
        return error;
    }
    return std::nullopt;
}

inline const ZipWriterError tooLarge(ZipWriterError::TooLarge{});

inline ZipWriterError invalidName(std::string name)
{
    return {ZipWriterError::InvalidName{std::move(name)}};
}

/// Settings whose encoder counts its calls in `asked` and always fails, so that everything is stored.
inline ZipWriter::Settings countingIn(int& asked, std::uint64_t largest)
{
    return {[&asked](ByteView, std::span<std::byte>) -> std::size_t {
                ++asked;
                return 0;
            },
            largest};
}

} // namespace vorn::testing
