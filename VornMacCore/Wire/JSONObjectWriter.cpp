#include "VornMacCore/Wire/JSONObjectWriter.h"

#include "Platform/Base/Text.h"

#include <cmath>
#include <utility>

#include <nlohmann/json.hpp>

namespace vorn {
namespace {

using Tree = nlohmann::ordered_json; // keeps the order of keys

/// Checked here, where the key is known: the library's own error quotes the bytes.
void requireWellFormed(std::string_view key, const std::string& text)
{
    if (!text::isWellFormed(text)) throw UnencodableJSON(std::string(key) + ": ill-formed UTF-8");
}

} // namespace

struct JSONObjectWriter::Object {
    Tree tree = Tree::object();

    void add(std::string_view key, Tree value) { tree.emplace(std::string(key), std::move(value)); }
};

JSONObjectWriter::JSONObjectWriter() : object_(std::make_unique<Object>())
{
}

JSONObjectWriter::~JSONObjectWriter() = default;
JSONObjectWriter::JSONObjectWriter(JSONObjectWriter&& other) noexcept = default;
JSONObjectWriter& JSONObjectWriter::operator=(JSONObjectWriter&& other) noexcept = default;

void JSONObjectWriter::string(std::string_view key, const std::string& value)
{
    requireWellFormed(key, value);
    object_->add(key, value);
}

void JSONObjectWriter::integer(std::string_view key, std::int64_t value)
{
    object_->add(key, value);
}

void JSONObjectWriter::number(std::string_view key, double value)
{
    // The library would write null.
    if (!std::isfinite(value)) throw UnencodableJSON(std::string(key) + ": not a finite number");
    object_->add(key, value);
}

void JSONObjectWriter::strings(std::string_view key, const std::vector<std::string>& values)
{
    Tree array = Tree::array();
    for (const std::string& value : values) {
        requireWellFormed(key, value);
        array.push_back(value);
    }
    object_->add(key, std::move(array));
}

void JSONObjectWriter::object(std::string_view key, JSONObjectWriter value)
{
    object_->add(key, std::move(value.object_->tree));
}

void JSONObjectWriter::objects(std::string_view key, std::vector<JSONObjectWriter> values)
{
    Tree array = Tree::array();
    for (JSONObjectWriter& value : values) array.push_back(std::move(value.object_->tree));
    object_->add(key, std::move(array));
}

std::string JSONObjectWriter::text() const
{
    return object_->tree.dump();
}

} // namespace vorn
