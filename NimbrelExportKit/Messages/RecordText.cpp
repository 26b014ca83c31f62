#include "NimbrelExportKit/Messages/RecordText.h"

#include "Platform/Base/Fatal.h"
#include "Platform/Base/Memory.h"
#include "Platform/Base/Owned.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

namespace vorn {
namespace {

constexpr std::size_t firstBlock = 64UL * 1024;
constexpr std::size_t largestBlock = 16UL * 1024 * 1024; // large enough for the system's large pages

std::uint32_t sizeOf(std::string_view text)
{
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) fatalError("a record's text has more than 4 GiB");
    return static_cast<std::uint32_t>(text.size());
}

} // namespace

RecordText::RecordText(std::string_view text) : size_(sizeOf(text)), owns_(!text.empty())
{
    if (!owns_) return;
    auto* characters = new char[text.size()];
    std::memcpy(characters, text.data(), text.size());
    characters_ = characters;
}

struct TextArena::Blocks {
    using Block = Owned<char, memory::release>;

    std::vector<Block> all;
    char* free = nullptr; ///< in the last block
    std::size_t room = 0;
    std::size_t nextSize = firstBlock;

    char* take(std::size_t size)
    {
        if (room < size) addBlock(size);
        room -= size;
        return std::exchange(free, free + size);
    }

private:
    void addBlock(std::size_t atLeast)
    {
        const std::size_t size = std::max(nextSize, atLeast);
        Block block(static_cast<char*>(memory::allocate(size)));
        all.push_back(std::move(block));
        free = all.back().get();
        room = size;
        nextSize = std::min(2 * nextSize, largestBlock);
    }
};

TextArena::TextArena() : blocks_(std::make_unique<Blocks>())
{
}

TextArena::~TextArena() = default;

RecordText TextArena::keep(std::string_view text)
{
    RecordText kept;
    if (text.empty()) return kept;
    char* characters = blocks_->take(text.size());
    std::memcpy(characters, text.data(), text.size());
    kept.characters_ = characters;
    kept.size_ = sizeOf(text);
    return kept;
}

RecordText TextArena::share(const RecordText& text) noexcept
{
    RecordText shared;
    shared.characters_ = text.characters_;
    shared.size_ = text.size_;
    return shared;
}

} // namespace vorn
