#include "VornMacCore/Wire/JSONObject.h"

#include "VornMacCore/Wire/JSONTree.h"

#include <limits>
#include <utility>

namespace vorn {
namespace {

using Tree = nlohmann::json;

const Tree& treeOf(const std::shared_ptr<const void>& tree)
{
    return *static_cast<const Tree*>(tree.get());
}

/// Names the place and the types, never the value.
[[noreturn]] void refuse(const std::string& path, const char* expected, const Tree* found)
{
    const std::string place = path.empty() ? "" : path + ": ";
    throw UndecodableJSON(place + "expected " + expected + ", found " +
                          (found != nullptr ? found->type_name() : "nothing"));
}

const Tree* find(const std::shared_ptr<const void>& object, std::string_view key)
{
    const Tree& tree = treeOf(object);
    const auto member = tree.find(key);
    return member == tree.end() ? nullptr : &*member;
}

bool fitsInteger(const Tree& value)
{
    if (!value.is_number_unsigned()) return value.is_number_integer();
    return value.get<std::uint64_t>() <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
}

std::string elementPath(const std::string& path, std::size_t index)
{
    return path + "[" + std::to_string(index) + "]";
}

} // namespace

JSONObject::JSONObject(std::shared_ptr<const void> tree, std::string path)
    : tree_(std::move(tree)), path_(std::move(path))
{
    if (!treeOf(tree_).is_object()) refuse(path_, "an object", &treeOf(tree_));
}

JSONObject JSONObject::parse(std::string_view text)
{
    return {std::make_shared<const Tree>(parseJSONTree(text)), ""};
}

bool JSONObject::has(std::string_view key) const
{
    const Tree* value = find(tree_, key);
    return value != nullptr && !value->is_null();
}

std::string JSONObject::string(std::string_view key) const
{
    const Tree* value = find(tree_, key);
    if (value == nullptr || !value->is_string()) refuse(pathOf(key), "a string", value);
    return value->get_ref<const std::string&>();
}

std::int64_t JSONObject::integer(std::string_view key) const
{
    const Tree* value = find(tree_, key);
    if (value == nullptr || !fitsInteger(*value)) refuse(pathOf(key), "a 64-bit integer", value);
    return value->get<std::int64_t>();
}

double JSONObject::number(std::string_view key) const
{
    const Tree* value = find(tree_, key);
    if (value == nullptr || !value->is_number()) refuse(pathOf(key), "a number", value);
    return value->get<double>();
}

std::vector<std::string> JSONObject::strings(std::string_view key) const
{
    const Tree* array = find(tree_, key);
    if (array == nullptr || !array->is_array()) refuse(pathOf(key), "an array", array);
    std::vector<std::string> strings;
    strings.reserve(array->size());
    for (const Tree& element : *array) {
        if (!element.is_string()) refuse(elementPath(pathOf(key), strings.size()), "a string", &element);
        strings.push_back(element.get_ref<const std::string&>());
    }
    return strings;
}

JSONObject JSONObject::object(std::string_view key) const
{
    const Tree* value = find(tree_, key);
    if (value == nullptr) refuse(pathOf(key), "an object", value);
    return {std::shared_ptr<const void>(tree_, value), pathOf(key)};
}

void JSONObject::forEachObject(std::string_view key, const std::function<void(const JSONObject&)>& onObject) const
{
    const Tree* array = find(tree_, key);
    if (array == nullptr || !array->is_array()) refuse(pathOf(key), "an array", array);
    const std::string path = pathOf(key);
    for (std::size_t index = 0; index < array->size(); ++index)
        onObject(JSONObject(std::shared_ptr<const void>(tree_, &(*array)[index]), elementPath(path, index)));
}

std::string JSONObject::pathOf(std::string_view key) const
{
    return path_.empty() ? std::string(key) : path_ + "." + std::string(key);
}

} // namespace vorn
