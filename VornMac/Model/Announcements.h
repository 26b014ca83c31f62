#pragma once

#include <deque>
#include <functional>
#include <utility>

namespace vorn {

/// Tells of changes once the transition that made them is over: whoever hears of one sees a state that is whole, and
/// what they begin in answer steps into no transition.
/// Threads: one.
class Announcements {
public:
    using Tell = std::function<void()>;

    /// While one lives, changes wait. The end of the outermost tells of them, in their order.
    class [[nodiscard]] Transition {
    public:
        explicit Transition(Announcements& announcements) : announcements_(announcements) { ++announcements_.depth_; }
        ~Transition()
        {
            --announcements_.depth_;
            announcements_.tellPending();
        }
        Transition(Transition&&) = delete;

    private:
        Announcements& announcements_;
    };

    enum class Place { last, first };

    /// `property`, which lives as long as this, was `before` and has changed. One that changes several times before it
    /// is told of is told of once, and not at all if it is `before` again by then. `place` is where it stands among
    /// those that wait.
    template <class Value>
    void changed(const Value& property, Value before, Tell tell, Place place = Place::last)
    {
        add({&property, [&property, before = std::move(before)] { return property != before; }, std::move(tell)},
            place);
    }

private:
    struct Pending {
        const void* property;
        std::function<bool()> isChanged;
        Tell tell;
    };

    void add(Pending change, Place place);
    void tellPending();

    std::deque<Pending> pending_;
    int depth_ = 0;
};

} // namespace vorn
