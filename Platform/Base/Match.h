#pragma once

namespace vorn {

/// One function for each case of a variant, for `std::visit`: `std::visit(Match{[](Idle) {…}, [](Failed f) {…}},
/// phase)`. A case without one does not compile.
template <class... Cases>
struct Match : Cases... {
    using Cases::operator()...;
};

// Written out for compilers that cannot deduce it yet.
template <class... Cases>
Match(Cases...) -> Match<Cases...>;

} // namespace vorn
