#include "Platform/Base/IDNA.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(IDNA, WritesNamesAsResolversKnowThem)
{
    constexpr std::pair<std::string_view, std::string_view> names[] = {
        {"bücher.example", "xn--bcher-kva.example"},
        {"BÜCHER.Example", "xn--bcher-kva.example"},
        {"faß.de", "xn--fa-hia.de"}, // "fass.de", the transitional form, is another host
        {"пример.рф", "xn--e1afmkfd.xn--p1ai"},
        {"例え.テスト", "xn--r8jz45g.xn--zckzah"},
        {"☕.ws", "xn--53h.ws"},
        {"a_b.bücher.de", "a_b.xn--bcher-kva.de"},
        {"r3---sn.bücher.de", "r3---sn.xn--bcher-kva.de"},
        {"ｅｘａｍｐｌｅ.com", "example.com"},
        {"xn--bcher-kva.bücher.de", "xn--bcher-kva.xn--bcher-kva.de"},
    };
    for (const auto& [name, ascii] : names) EXPECT_EQ(idna::toASCII(name), ascii) << name;
}

TEST(IDNA, RefusesWhatIsNoName)
{
    const std::string longLabel = [] {
        std::string label;
        for (int i = 0; i < 63; ++i) label += "ü";
        return label;
    }();
    for (const std::string& name :
         {std::string("a\u00AD.\u00AD.de"), std::string("℀.de"), std::string("a\u200Db.de"), std::string("אa.de"),
          std::string("xn--0.bücher.de"), std::string("-ü.de"), longLabel + ".de", std::string(1025, 'a')}) {
        EXPECT_EQ(idna::toASCII(name), std::nullopt) << name;
    }
}

} // namespace
} // namespace vorn
