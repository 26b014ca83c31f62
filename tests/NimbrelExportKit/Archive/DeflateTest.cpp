#include "NimbrelExportKit/Archive/Deflate.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

#include <zlib.h>

namespace vorn {
namespace {

/// A text that compresses well, and is long enough to be verified in several pieces.
std::string longText()
{
    std::string text;
    for (int i = 0; text.size() < 700'000; ++i) text += "message " + std::to_string(i * 7919 % 100'003) + " of many\n";
    return text;
}

ByteBuffer deflatedByZlib(ByteView data)
{
    ByteBuffer packed(data.size() + 100);
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, 6, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY), Z_OK);
    stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(data.data()));
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.resize(packed.size() - stream.avail_out);
    deflateEnd(&stream);
    return packed;
}

/// An encoder whose result is always `packed`.
DeflateEncoder answering(ByteBuffer packed)
{
    return [packed = std::move(packed)](ByteView, std::span<std::byte> room) -> std::size_t {
        if (packed.empty() || packed.size() > room.size()) return 0;
        std::memcpy(room.data(), packed.data(), packed.size());
        return packed.size();
    };
}

std::optional<std::size_t> compressedSize(const DeflateEncoder& encoder, std::string_view text)
{
    ByteBuffer room(text.size());
    return CheckedDeflate(encoder).compress(bytesOf(text), room);
}

TEST(Deflate, MakesARawStreamThatInflatesToTheData)
{
    const std::string text = longText();
    ByteBuffer room(text.size());
    const std::size_t size = CheckedDeflate(libdeflateEncoder()).compress(bytesOf(text), room).value_or(0);
    ASSERT_GT(size, 0U);
    EXPECT_LT(size, text.size() / 3);

    std::string content(text.size(), '\0');
    z_stream stream{};
    ASSERT_EQ(inflateInit2(&stream, -MAX_WBITS), Z_OK);
    stream.next_in = reinterpret_cast<Bytef*>(room.data());
    stream.avail_in = static_cast<uInt>(size);
    stream.next_out = reinterpret_cast<Bytef*>(content.data());
    stream.avail_out = static_cast<uInt>(content.size());
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    inflateEnd(&stream);
    EXPECT_EQ(content, text);
}

TEST(Deflate, IsAboutAsSmallAsZlib)
{
    const std::string text = longText();
    const std::size_t size = compressedSize(libdeflateEncoder(), text).value_or(0);
    ASSERT_GT(size, 0U);
    EXPECT_LE(static_cast<double>(size), 1.02 * static_cast<double>(deflatedByZlib(bytesOf(text)).size()));
}

TEST(Deflate, GivesNothingForDataThatDoesNotGetSmaller)
{
    std::mt19937 random(3);
    std::string noise(100'000, '\0');
    for (char& byte : noise) byte = static_cast<char>(random());
    EXPECT_EQ(compressedSize(libdeflateEncoder(), noise), std::nullopt);
}

TEST(Deflate, EncodesOneDataAfterAnother)
{
    const DeflateEncoder encoder = libdeflateEncoder();
    const auto first = compressedSize(encoder, longText());
    EXPECT_TRUE(compressedSize(encoder, std::string(1'000, 'x')));
    EXPECT_EQ(compressedSize(encoder, longText()), first);
}

TEST(Deflate, TakesTheResultOfAnyEncoderThatIsRight)
{
    const std::string text = longText();
    const ByteBuffer packed = deflatedByZlib(bytesOf(text));
    EXPECT_EQ(compressedSize(answering(packed), text), packed.size());
}

TEST(Deflate, GivesNothingWhenTheEncoderFails)
{
    EXPECT_EQ(compressedSize(answering({}), longText()), std::nullopt);
}

/// `packed` with empty blocks before it: the same content in more bytes.
ByteBuffer padded(const ByteBuffer& packed, std::size_t blocks)
{
    ByteBuffer longer;
    for (; blocks > 0; --blocks) {
        for (const unsigned byte : {0x00U, 0x00U, 0x00U, 0xFFU, 0xFFU}) longer.push_back(static_cast<std::byte>(byte));
    }
    longer.insert(longer.end(), packed.begin(), packed.end());
    return longer;
}

TEST(Deflate, GivesNothingForAResultAsLargeAsTheData)
{
    std::string text(100, 'x');
    while ((text.size() - deflatedByZlib(bytesOf(text)).size()) % 5 != 0) text += 'x';
    const ByteBuffer packed = deflatedByZlib(bytesOf(text));
    const std::size_t blocks = (text.size() - packed.size()) / 5;

    const ByteBuffer asLarge = padded(packed, blocks);
    ASSERT_EQ(asLarge.size(), text.size());
    EXPECT_EQ(compressedSize(answering(asLarge), text), std::nullopt);
    EXPECT_EQ(compressedSize(answering(padded(packed, blocks - 1)), text), text.size() - 5);
}

/// Possible outputs of a faulty encoder.
TEST(Deflate, GivesNothingWhenTheResultDoesNotInflateToTheData)
{
    const std::string text = longText();
    const ByteBuffer right = deflatedByZlib(bytesOf(text));

    std::string changed = text;
    changed.back() ^= 1;
    std::string changedEarly = text;
    changedEarly.front() ^= 1;
    ByteBuffer cut = right;
    cut.pop_back();
    ByteBuffer longer = right;
    longer.push_back(std::byte{0});
    ByteBuffer damaged = right;
    damaged[damaged.size() / 2] ^= std::byte{0x10};

    const std::pair<const char*, ByteBuffer> cases[] = {
        {"last byte differs", deflatedByZlib(bytesOf(changed))},
        {"first byte differs", deflatedByZlib(bytesOf(changedEarly))},
        {"one byte less", deflatedByZlib(bytesOf(std::string_view(text).substr(0, text.size() - 1)))},
        {"one byte more", deflatedByZlib(bytesOf(text + "!"))},
        {"twice as much", deflatedByZlib(bytesOf(text + text))},
        {"nothing at all", deflatedByZlib({})},
        {"a stream without its end", cut},
        {"a byte behind its end", longer},
        {"a damaged stream", damaged},
        {"not a stream", ByteBuffer(1'000, std::byte{0xFF})},
    };
    for (const auto& [name, packed] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(compressedSize(answering(packed), text), std::nullopt);
    }
}

TEST(Deflate, ReadsBackDataOfExactlyWholePieces)
{
    for (const std::size_t size :
         {std::size_t{65}, std::size_t{256} * 1024 - 1, std::size_t{256} * 1024, std::size_t{512} * 1024}) {
        EXPECT_TRUE(compressedSize(libdeflateEncoder(), std::string(size, 'x'))) << size;
    }
}

} // namespace
} // namespace vorn
