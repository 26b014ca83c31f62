#include "VornMacCore/Wire/JSONRecord.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

enum class Colour { red, other };

Colour colourOf(std::string_view name)
{
    return name == "red" ? Colour::red : Colour::other;
}

struct Leaf {
    std::string name;
    bool operator==(const Leaf&) const = default;
};

/// One field of every kind, each also optional.
struct Tree {
    std::string text;
    std::int64_t count = 0;
    double sum = 0;
    std::vector<std::string> words;
    Leaf leaf;
    std::vector<Leaf> leaves;
    std::optional<std::string> noText;
    std::optional<std::int64_t> noCount;
    std::optional<double> noSum;
    std::optional<std::vector<std::string>> noWords;
    std::optional<Leaf> noLeaf;
    std::optional<std::vector<Leaf>> noLeaves;
    bool operator==(const Tree&) const = default;
};

struct Paint {
    Colour colour = Colour::other;
    std::optional<Colour> second;
};

} // namespace

template <>
inline constexpr auto jsonTextReader<Colour> = &colourOf;

template <>
inline constexpr auto jsonFields<Leaf> = std::tuple{JSONField{"name", &Leaf::name}};

template <>
inline constexpr auto jsonFields<Tree> = std::tuple{
    JSONField{"text", &Tree::text},       JSONField{"count", &Tree::count},     JSONField{"sum", &Tree::sum},
    JSONField{"words", &Tree::words},     JSONField{"leaf", &Tree::leaf},       JSONField{"leaves", &Tree::leaves},
    JSONField{"noText", &Tree::noText},   JSONField{"noCount", &Tree::noCount}, JSONField{"noSum", &Tree::noSum},
    JSONField{"noWords", &Tree::noWords}, JSONField{"noLeaf", &Tree::noLeaf},   JSONField{"noLeaves", &Tree::noLeaves},
};

template <>
inline constexpr auto jsonFields<Paint> = std::tuple{
    JSONField{"colour", &Paint::colour},
    JSONField{"second", &Paint::second},
};

namespace {

const Tree bare{"t", 7, 0.5, {"w"}, {"l"}, {{"a"}, {"b"}}, {}, {}, {}, {}, {}, {}};
const std::string bareText =
    R"({"text":"t","count":7,"sum":0.5,"words":["w"],"leaf":{"name":"l"},"leaves":[{"name":"a"},{"name":"b"}]})";

Tree full()
{
    Tree tree = bare;
    tree.noText = "";
    tree.noCount = 0;
    tree.noSum = 0.0;
    tree.noWords = std::vector<std::string>{};
    tree.noLeaf = Leaf{""};
    tree.noLeaves = std::vector<Leaf>{};
    return tree;
}

const std::string fullText = bareText.substr(0, bareText.size() - 1) +
                             R"(,"noText":"","noCount":0,"noSum":0.0,"noWords":[],"noLeaf":{"name":""},"noLeaves":[]})";

TEST(JSONRecord, LeavesAbsentOptionalsOut)
{
    EXPECT_EQ(encodeJSON(bare), bareText);
}

TEST(JSONRecord, WritesPresentOptionalsEvenWhenEmpty)
{
    EXPECT_EQ(encodeJSON(full()), fullText);
}

TEST(JSONRecord, ReadsWhatItWrites)
{
    EXPECT_EQ(decodeJSON<Tree>(bareText), bare);
    EXPECT_EQ(decodeJSON<Tree>(fullText), full());
}

TEST(JSONRecord, ReadsNullOptionalsAsAbsent)
{
    const std::string nulls =
        bareText.substr(0, bareText.size() - 1) +
        R"(,"noText":null,"noCount":null,"noSum":null,"noWords":null,"noLeaf":null,"noLeaves":null})";
    EXPECT_EQ(decodeJSON<Tree>(nulls), bare);
}

TEST(JSONRecord, ReadsTextAsAnotherType)
{
    EXPECT_EQ(decodeJSON<Paint>(R"({"colour":"red"})").colour, Colour::red);
    EXPECT_EQ(decodeJSON<Paint>(R"({"colour":"blue"})").colour, Colour::other);
    EXPECT_EQ(decodeJSON<Paint>(R"({"colour":"blue"})").second, std::nullopt);
    EXPECT_EQ(decodeJSON<Paint>(R"({"colour":"blue","second":"red"})").second, Colour::red);
    EXPECT_THROW(decodeJSON<Paint>(R"({"colour":1})"), UndecodableJSON);
    EXPECT_THROW(decodeJSON<Paint>("{}"), UndecodableJSON);
}

} // namespace
} // namespace vorn
