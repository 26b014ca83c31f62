#include "VornMacCore/Wire/JSONTree.h"

#include "VornMacCore/Wire/JSONObject.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vorn {
namespace {

using Tree = nlohmann::json;

/// Builds the tree from the parser's events. The parser's own builder has no depth limit and silently keeps the last
/// value of a duplicate key.
class TreeBuilder : public nlohmann::json_sax<Tree> {
public:
    Tree take() { return std::move(root_); }

    // NOLINTBEGIN(readability-identifier-naming): the parser's names
    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(number_integer_t value) override { return add(value); }
    bool number_unsigned(number_unsigned_t value) override { return add(value); }
    bool number_float(number_float_t value, const string_t& /*token*/) override { return add(value); }
    bool string(string_t& value) override { return add(std::move(value)); }
    bool binary(binary_t& /*value*/) override { return false; } // never in JSON text

    bool start_object(std::size_t /*count*/) override { return open(Tree::object()); }
    bool key(string_t& name) override
    {
        const auto [member, isNew] = open_.back()->emplace(std::move(name), nullptr);
        if (!isNew) throw UndecodableJSON("duplicate key in an object");
        member_ = &*member;
        return true;
    }
    bool end_object() override { return close(); }

    bool start_array(std::size_t /*count*/) override { return open(Tree::array()); }
    bool end_array() override { return close(); }

    // The parser's message quotes the text around the mistake, which may be secret; the position is not.
    bool parse_error(std::size_t position, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override
    {
        throw UndecodableJSON("not JSON at byte " + std::to_string(position));
    }
    // NOLINTEND(readability-identifier-naming)

private:
    Tree& place(Tree value)
    {
        if (++values_ > JSONObject::maxValues) throw UndecodableJSON("too many values");
        if (open_.empty()) return root_ = std::move(value);
        if (open_.back()->is_array()) {
            open_.back()->push_back(std::move(value));
            return open_.back()->back();
        }
        return *member_ = std::move(value);
    }
    bool add(Tree value)
    {
        place(std::move(value));
        return true;
    }
    bool open(Tree container)
    {
        if (open_.size() == JSONObject::maxDepth) throw UndecodableJSON("nested too deeply");
        open_.push_back(&place(std::move(container)));
        return true;
    }
    bool close()
    {
        open_.pop_back();
        return true;
    }

    Tree root_;
    std::vector<Tree*> open_; ///< the open objects and arrays; a child never moves while it is open
    int values_ = 0;
    Tree* member_ = nullptr; ///< target of the next value, after its key
};

} // namespace

nlohmann::json parseJSONTree(std::string_view text)
{
    if (text.size() > JSONObject::maxTextSize) throw UndecodableJSON("too large");
    // The parser takes a NUL for the end of the text and ignores what follows.
    if (const auto at = text.find('\0'); at != std::string_view::npos)
        throw UndecodableJSON("not JSON at byte " + std::to_string(at + 1));
    TreeBuilder builder;
    Tree::sax_parse(text.begin(), text.end(), &builder);
    return builder.take();
}

} // namespace vorn
