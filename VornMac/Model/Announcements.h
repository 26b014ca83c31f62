#pragma once

#include <deque>
#include <functional>
#include <utility>

namespace vorn {

/// Emits the signals of a transition once it is over: listeners always see a consistent state, and their reaction never
/// re-enters a transition. Threads: one.
class Announcements {
public:
    using Tell = std::function<void()>;

    /// Defers signals while it lives. The end of the outermost one emits them in order.
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

    /// `property`, which must outlive this, has changed from `before`. Several changes before the signal is emitted
    /// count as one, or as none if the value is `before` again by then. `place` is its place among the deferred ones.
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
