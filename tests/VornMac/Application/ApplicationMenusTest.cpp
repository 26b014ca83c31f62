#include "VornMac/Application/ApplicationMenus.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> titlesOf(const Menu& menu)
{
    std::vector<std::string> titles;
    for (const MenuItem& item : menu.items) titles.push_back(item.title);
    return titles;
}

TEST(ApplicationMenus, AreThoseOfAMacsApplication)
{
    const auto menus = applicationMenus("", [](const std::string&) {}, [] {});
    ASSERT_EQ(menus.size(), 4U);
    EXPECT_EQ(menus[0].title, "Vorn");
    EXPECT_THAT(titlesOf(menus[0]),
                ElementsAre("About Vorn", "", "Hide Vorn", "Hide Others", "Show All", "", "Quit Vorn"));
    EXPECT_EQ(menus[1].title, "Edit");
    EXPECT_THAT(titlesOf(menus[1]), ElementsAre("Copy"));
    EXPECT_EQ(menus[2].title, "Window");
    EXPECT_THAT(titlesOf(menus[2]), ElementsAre("Minimize", "Zoom", "", "Close"));
    EXPECT_EQ(menus[3].title, "Help");
    EXPECT_THAT(titlesOf(menus[3]), ElementsAre("Vorn Help", "Privacy", "Third-Party Notices"));
}

TEST(ApplicationMenus, OpenHelpPrivacyAndNoticesAndQuit)
{
    std::vector<std::string> opened;
    int quits = 0;
    const auto menus = applicationMenus(
        "file:///notices", [&](const std::string& address) { opened.push_back(address); }, [&] { ++quits; });
    for (const MenuItem& item : menus[3].items) item.action();
    EXPECT_THAT(opened, ElementsAre("https://vorn.example/help", "https://vorn.example/privacy", "file:///notices"));
    menus[0].items.back().action();
    EXPECT_EQ(quits, 1);
}

} // namespace
} // namespace vorn
