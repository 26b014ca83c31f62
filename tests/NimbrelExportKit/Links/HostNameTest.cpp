#include "NimbrelExportKit/Links/HostName.h"

#include <string>

#include <gtest/gtest.h>

namespace vorn::links {
namespace {

using Kind = Host::Kind;

struct Case {
    std::string_view text;
    Kind kind;
    std::string_view host; ///< compared unless the kind is none
};

void expectHosts(std::initializer_list<Case> cases)
{
    for (const auto& [text, kind, host] : cases) {
        SCOPED_TRACE(text);
        const Host read = readHost(text, 0);
        EXPECT_EQ(read.kind, kind);
        if (kind != Kind::none) EXPECT_EQ(text.substr(0, read.end), host);
        EXPECT_LE(read.readTo, text.size());
    }
}

TEST(HostName, ReadsNames)
{
    expectHosts({
        {"example.com/path", Kind::known, "example.com"},
        {"a.b.c.example.co.uk:80", Kind::known, "a.b.c.example.co.uk"},
        {"EXAMPLE.Com", Kind::known, "EXAMPLE.Com"},
        {"my--shop.de", Kind::known, "my--shop.de"},
        {"user_pages.example.org", Kind::known, "user_pages.example.org"},
        {"xn--bcher-kva.example", Kind::unknown, "xn--bcher-kva.example"},
        {"printer.internal", Kind::unknown, "printer.internal"},
        {"localhost", Kind::singleName, "localhost"},
        {"4711", Kind::singleName, "4711"},
        {"bücher.de", Kind::known, "bücher.de"},
        {"ПРИМЕР.РФ", Kind::known, "ПРИМЕР.РФ"},
        {"☕.example.com", Kind::known, "☕.example.com"},
    });
}

TEST(HostName, ReadsAddresses)
{
    expectHosts({
        {"127.0.0.1:8080", Kind::address, "127.0.0.1"},
        {"255.255.255.255", Kind::address, "255.255.255.255"},
        {"0.0.0.0", Kind::address, "0.0.0.0"},
        {"[::1]:8080", Kind::address, "[::1]"},
        {"[2001:db8::7]/", Kind::address, "[2001:db8::7]"},
        {"[::ffff:10.0.0.1]", Kind::address, "[::ffff:10.0.0.1]"},
    });
}

TEST(HostName, RefusesNumbersThatMakeNoAddress)
{
    expectHosts({
        {"1.2.3", Kind::none, ""},
        {"1.2.3.4.5", Kind::none, ""},
        {"1.2.3.256", Kind::none, ""},
        {"1.2.3.0400", Kind::none, ""},
        {"10.0.0.09", Kind::none, ""},
        {"010.0.0.9", Kind::none, ""},
        {"name.17", Kind::none, ""},
        {"[1:2]", Kind::none, ""},
        {"[::1", Kind::none, ""},
        {"[]", Kind::none, ""},
        {"[", Kind::none, ""},
        {"[0000:0000:0000:0000:0000:0000:0000:0000:0000:0000:0000:0000]", Kind::none, ""},
    });
}

TEST(HostName, RefusesLabelsThatCannotBe)
{
    expectHosts({
        {"", Kind::none, ""},
        {".com", Kind::none, ""},
        {"-shop.com", Kind::none, ""},
        {"shop-.com", Kind::none, ""},
        {"_shop.example.com", Kind::none, ""},
        {"shop_.example.com", Kind::none, ""},
        {"my_shop.com", Kind::none, ""},
        {"shop.my_tld", Kind::none, ""},
        {"shop.com_", Kind::none, ""},
        {"shop.com-and-more", Kind::none, ""},
        {"xn--bücher.de", Kind::none, ""},
        {"日本語", Kind::none, ""},
    });
}

TEST(HostName, CountsCharactersOfALabelNotBytes)
{
    const auto label = [](std::string_view character, int count) {
        std::string text;
        for (int i = 0; i < count; ++i) text += character;
        return text;
    };
    EXPECT_EQ(readHost(label("a", 63) + ".com", 0).kind, Kind::known);
    EXPECT_EQ(readHost(label("a", 64) + ".com", 0).kind, Kind::none);
    EXPECT_EQ(readHost(label("あ", 63) + ".com", 0).kind, Kind::known);
    EXPECT_EQ(readHost(label("あ", 64) + ".com", 0).kind, Kind::none);
}

TEST(HostName, RefusesNamesLongerThanTheNameSystemTakes)
{
    std::string name;
    for (int i = 0; i < 125; ++i) name += "a.";
    EXPECT_EQ(readHost(name + "com", 0).kind, Kind::known); // 253 characters
    EXPECT_EQ(readHost("b" + name + "com", 0).kind, Kind::none);
}

TEST(HostName, EndsBeforeTextOfAnotherScript)
{
    expectHosts({
        {"example.comです", Kind::known, "example.com"},
        {"example.comです.jp", Kind::known, "example.com"},
        {"example.comпривет", Kind::known, "example.com"},
        {"example.comשלום", Kind::known, "example.com"},
        {"example.com😀", Kind::known, "example.com"},
        {"店.みんなです", Kind::known, "店.みんな"},
        {"exampleです.com", Kind::known, "exampleです.com"},
    });
}

TEST(HostName, EndsBeforeASentenceWhoseSpaceIsMissing)
{
    expectHosts({
        {"shop.com.Then we left", Kind::known, "shop.com"},
        {"my.shop.org.It's open", Kind::known, "my.shop.org"},
        {"shop.com.We left", Kind::known, "shop.com"},
        {"my.shop.org.Here it is", Kind::known, "my.shop.org"},
        {"shop.com.I'm here", Kind::known, "shop.com"},
        {"shop.com.Then", Kind::unknown, "shop.com.Then"},
        {"shop.com.then we left", Kind::unknown, "shop.com.then"},
        {"Shop.Com.Then we left", Kind::unknown, "Shop.Com.Then"},
        {"shop.com.Au for more", Kind::known, "shop.com.Au"},
        {"java.io.Reader is", Kind::unknown, "java.io.Reader"},
    });
}

TEST(HostName, EndsBeforePunctuation)
{
    expectHosts({
        {"example.com.", Kind::known, "example.com"},
        {"example.com...", Kind::known, "example.com"},
        {"example.com-", Kind::known, "example.com"},
        {"example.com--see", Kind::none, ""},
        {"example.com。", Kind::known, "example.com"},
        {"example.com（", Kind::known, "example.com"},
        {"example.com’s", Kind::known, "example.com"},
        {"example.com's", Kind::known, "example.com"},
    });
}

TEST(HostName, IsReadAgainWhereASchemeFollows)
{
    EXPECT_EQ(readHost("1.https://example.com", 0).readTo, 2U);
    EXPECT_EQ(readHost("http://example.com", 0).readTo, 0U);
    EXPECT_EQ(readHost("shop-.com", 0).readTo, 9U);
}

TEST(HostName, LabelsBeginWhereTheirScriptDoes)
{
    struct Label {
        std::string_view text;
        std::string_view label;
    };
    constexpr Label cases[] = {
        {"example", "example"},
        {"see example", "example"},
        {"(example", "example"},
        {"日本語example", "example"},
        {"привет-example", "-example"},
        {"👉example", "example"},
        {"example👉", "example👉"},
        {"see my☕️", "my☕️"},
        {"👉example👉", "example👉"},
        {"日本👉", "👉"},
        {"Größe", "Größe"},
        {"x日本語", "日本語"},
        {"пример", "пример"},
        {"2-go", "2-go"},
        {"a_b", "a_b"},
        {"", ""},
        {"!", ""},
    };
    for (const auto& [text, label] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(text.substr(labelStart(text, text.size(), 0)), label);
    }
}

TEST(HostName, LooksBackNoFurtherThanTheFloorOrALongLabel)
{
    EXPECT_EQ(labelStart("abcdef", 6, 4), 4U);
    EXPECT_GT(labelStart(std::string(1000, 'a'), 1000, 0), 700U);
}

} // namespace
} // namespace vorn::links
