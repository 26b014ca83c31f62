#include "tests/VornMacCore/Wire/WireAnswers.h"

#include "VornMacCore/Wire/JSONErrors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace vorn {
namespace {

using Json = nlohmann::json;
using testing::WireAnswer;

/// One value in a good document.
struct Place {
    Json::json_pointer pointer;
    std::string path; ///< as errors name it: "assets[0].parts"
    bool isMember;    ///< of an object; else an element of an array
    bool isOptional;
};

void collectPlaces(const Json& value, const Place& parent, const std::string& keys, const WireAnswer& answer,
                   std::vector<Place>& places)
{
    for (const auto& [key, child] : value.items()) {
        Place place{parent.pointer, parent.path, value.is_object(), false};
        std::string childKeys = keys;
        if (value.is_object()) {
            place.pointer /= key;
            place.path += (place.path.empty() ? "" : ".") + key;
            childKeys += (keys.empty() ? "" : ".") + key;
            place.isOptional = answer.optional.contains(childKeys);
        } else {
            place.pointer /= static_cast<std::size_t>(std::stoul(key));
            place.path += "[" + key + "]";
        }
        places.push_back(place);
        if (child.is_structured()) collectPlaces(child, place, childKeys, answer, places);
    }
}

std::vector<Place> placesIn(const WireAnswer& answer)
{
    std::vector<Place> places;
    collectPlaces(Json::parse(answer.good), Place{Json::json_pointer(), "", false, false}, "", answer, places);
    return places;
}

/// The complaint about `document`; "" if it is read.
std::string complaint(const WireAnswer& answer, const Json& document)
{
    try {
        answer.read(document.dump());
        return "";
    } catch (const UndecodableJSON& error) {
        return error.what();
    }
}

Json without(const Json& document, const Place& place)
{
    Json changed = document;
    changed.at(place.pointer.parent_pointer()).erase(place.pointer.back());
    return changed;
}

Json with(const Json& document, const Place& place, const Json& value)
{
    Json changed = document;
    changed.at(place.pointer) = value;
    return changed;
}

/// Values that must not be read in place of `good`: of other types, or of its type with unusable content.
std::vector<Json> wrongValuesFor(const Json& good)
{
    const std::vector<Json> values = {
        "canary", true, false, 31'337, 31'337.5, 18'446'744'073'709'551'615U, Json::array({nullptr}), Json::object()};
    std::vector<Json> wrong;
    for (const Json& value : values) {
        const bool sameType = good.is_number_integer() ? value == 31'337
                              : good.is_number_float() ? value.is_number()
                                                       : value.type() == good.type() && !value.is_structured();
        if (!sameType) wrong.push_back(value);
    }
    return wrong;
}

class WireAnswers : public ::testing::TestWithParam<WireAnswer> {
protected:
    const WireAnswer& answer = GetParam();
    const Json good = Json::parse(answer.good);
    const std::vector<Place> places = placesIn(answer);
};

TEST_P(WireAnswers, AreReadWhenWhole)
{
    EXPECT_EQ(complaint(answer, good), "");
}

TEST_P(WireAnswers, NeedEveryRequiredKey)
{
    for (const Place& place : places) {
        if (!place.isMember) continue;
        const std::string found = complaint(answer, without(good, place));
        if (place.isOptional) {
            EXPECT_EQ(found, "") << place.path;
        } else {
            EXPECT_THAT(found, ::testing::StartsWith(place.path + ": expected ")) << place.path;
            EXPECT_THAT(found, ::testing::EndsWith(", found nothing")) << place.path;
        }
    }
}

TEST_P(WireAnswers, TakeNullForAbsentOptionalsOnly)
{
    for (const Place& place : places) {
        const std::string found = complaint(answer, with(good, place, nullptr));
        if (place.isOptional) {
            EXPECT_EQ(found, "") << place.path;
        } else {
            EXPECT_THAT(found, ::testing::StartsWith(place.path + ": expected ")) << place.path;
            EXPECT_THAT(found, ::testing::EndsWith(", found null")) << place.path;
        }
    }
}

TEST_P(WireAnswers, ConvertNoTypeIntoAnother)
{
    for (const Place& place : places) {
        for (const Json& value : wrongValuesFor(good.at(place.pointer))) {
            const std::string found = complaint(answer, with(good, place, value));
            EXPECT_THAT(found, ::testing::HasSubstr(": expected ")) << place.path << " = " << value;
            EXPECT_THAT(found, ::testing::StartsWith(place.path)) << place.path << " = " << value;
        }
    }
}

TEST_P(WireAnswers, ComplainWithoutShowingAnyValue)
{
    for (const Place& place : places) {
        for (const Json& value : {Json("canary"), Json(31'337), Json::array({"canary"})}) {
            const std::string found = complaint(answer, with(good, place, value));
            EXPECT_THAT(found, ::testing::Not(::testing::HasSubstr("canary"))) << place.path;
            EXPECT_THAT(found, ::testing::Not(::testing::HasSubstr("31337"))) << place.path;
        }
    }
}

TEST_P(WireAnswers, IgnoreKeysTheyDoNotKnow)
{
    Json extended = good;
    extended["unknown"] = Json::object({{"deep", Json::array({1, nullptr, "x"})}});
    for (const Place& place : places) {
        if (good.at(place.pointer).is_object()) extended.at(place.pointer)["unknown"] = nullptr;
    }
    EXPECT_EQ(complaint(answer, extended), "");
}

TEST_P(WireAnswers, AreObjects)
{
    EXPECT_EQ(complaint(answer, Json::array({good})), "expected an object, found array");
    EXPECT_EQ(complaint(answer, nullptr), "expected an object, found null");
    EXPECT_THROW(answer.read(""), UndecodableJSON);
    EXPECT_THROW(answer.read("<html>"), UndecodableJSON);
}

INSTANTIATE_TEST_SUITE_P(Received, WireAnswers, ::testing::ValuesIn(testing::wireAnswers()),
                         ::testing::PrintToStringParamName());

} // namespace
} // namespace vorn
