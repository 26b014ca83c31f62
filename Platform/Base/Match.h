#pragma once

namespace vorn {

/// One function for each case of a variant, for `std::visit`: `std::visit(Match{[](Idle) {…}, [](Failed f) {…}},
/// phase)`. A missing case does not compile.
template <class... Cases>
struct Match : Cases... {
    using Cases::operator()...;
};

// For compilers that cannot deduce the arguments of an aggregate yet.
template <class... Cases>
Match(Cases...) -> Match<Cases...>;

} // namespace vorn
