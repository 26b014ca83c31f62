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

    /// Defers signals while it lives. When the outermost one is destroyed, they are emitted in order.
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

    /// Announces with `tell` that `property`, which must outlive this object, has changed from `before`. Several
    /// changes before `tell` is called count as one, or as none if the value is `before` again by then. `place` is the
    /// position among the deferred announcements.
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
