#include "VornMac/Composition/LayeredDefaults.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

struct KeptDefaults : UserDefaults {
    std::map<std::string, std::string> texts;
    std::map<std::string, bool> booleans;

    std::optional<std::string> text(const std::string& key) const override
    {
        return texts.contains(key) ? std::optional(texts.at(key)) : std::nullopt;
    }
    bool boolean(const std::string& key) const override { return booleans.contains(key) && booleans.at(key); }
    void setBoolean(const std::string& key, bool value) override { booleans[key] = value; }
    void setText(const std::string& key, const std::string& value) override { texts[key] = value; }
};

TEST(LayeredDefaults, ReadTheLineFirst)
{
    KeptDefaults below;
    below.texts = {{"Both", "kept"}, {"Kept", "kept"}};
    below.booleans = {{"Off", true}, {"Kept", true}};
    const LayeredDefaults defaults({{"Both", "line"}, {"On", "YES"}, {"Off", "NO"}}, below);
    EXPECT_EQ(defaults.text("Both"), "line");
    EXPECT_EQ(defaults.text("Kept"), "kept");
    EXPECT_EQ(defaults.text("Neither"), std::nullopt);
    EXPECT_TRUE(defaults.boolean("On"));
    EXPECT_FALSE(defaults.boolean("Off"));
    EXPECT_TRUE(defaults.boolean("Kept"));
    EXPECT_FALSE(defaults.boolean("Neither"));
}

TEST(LayeredDefaults, SetBelow)
{
    KeptDefaults below;
    LayeredDefaults defaults({{"Off", "NO"}}, below);
    defaults.setBoolean("Off", true);
    defaults.setBoolean("Other", true);
    defaults.setText("Place", "here");
    EXPECT_FALSE(defaults.boolean("Off")) << "the line counts for this run";
    EXPECT_TRUE(defaults.boolean("Other"));
    EXPECT_EQ(below.booleans, (std::map<std::string, bool>{{"Off", true}, {"Other", true}}));
    EXPECT_EQ(defaults.text("Place"), "here");
    EXPECT_EQ(below.texts, (std::map<std::string, std::string>{{"Place", "here"}}));
}

} // namespace
} // namespace vorn
