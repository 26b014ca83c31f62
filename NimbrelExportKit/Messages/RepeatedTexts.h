#pragma once

#include "NimbrelExportKit/Messages/RecordText.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace vorn {

/// Keeps one copy, in an arena, of each text that many records share.
class RepeatedTexts {
public:
    explicit RepeatedTexts(TextArena& arena) : arena_(arena) {}

    RecordText of(std::string_view text)
    {
        if (last_ == texts_.end() || last_->first != text) last_ = texts_.find(text);
        if (last_ == texts_.end()) last_ = texts_.emplace(text, arena_.keep(text)).first;
        return TextArena::share(last_->second);
    }

private:
    TextArena& arena_;
    std::map<std::string, RecordText, std::less<>> texts_;
    decltype(texts_)::iterator last_ = texts_.end(); ///< the text returned last; nearly always the next one too
};

} // namespace vorn
