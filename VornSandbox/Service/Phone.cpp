#include "VornSandbox/Service/Phone.h"

#include "VornSandbox/Service/EmbeddedFiles.h"

#include <memory>
#include <string_view>
#include <utility>

namespace vorn::sandbox {
namespace {

using nlohmann::json;
using Steady = std::chrono::steady_clock;

/// How often the view is rebuilt: codes expire and reviews proceed without any event.
constexpr auto refreshInterval = std::chrono::milliseconds(250);

/// A closed page is noticed only when something is written to it.
constexpr auto signOfLife = std::chrono::seconds(5);

/// Each open archive takes a temporary file of the size of its messages; a few are enough to go back and forth.
constexpr std::size_t mostArchives = 8;

/// A file of the page. It may load nothing from elsewhere, and run nothing that an archive has smuggled in.
Route file(std::string_view path, const char* type, std::string_view content)
{
    const auto answer = [type, content](const Call&) -> Answer {
        return {.contentType = type,
                .body = std::string(content),
                .headers = {{"Content-Security-Policy", "default-src 'none'; script-src 'self'; style-src 'self';"
                                                        " connect-src 'self'; img-src data:; base-uri 'none';"
                                                        " form-action 'none'; frame-ancestors 'none'"},
                            {"X-Content-Type-Options", "nosniff"},
                            {"Cache-Control", "no-store"}}};
    };
    return {"phone", "GET", path, answer};
}

} // namespace

/// Sends a page its changes as server-sent events (https://html.spec.whatwg.org/multipage/server-sent-events.html): the
/// whole view at once and after every change.
class Phone::Watch {
public:
    explicit Watch(Phone& phone) : phone_(phone) {}

    bool step(const Answer::Write& write)
    {
        const std::string view = look();
        const auto now = Steady::now();
        if (view == shown_) {
            if (now - written_ < signOfLife) return true;
            written_ = now;
            return write(": still here\n\n");
        }
        shown_ = view;
        written_ = now;
        return write("data: " + view + "\n\n");
    }

private:
    /// Returns the view once it differs from the one shown, or after `refreshInterval`.
    std::string look()
    {
        auto lock = phone_.state_.lock();
        phone_.submissions_.settle();
        if (phone_.view() == shown_) phone_.state_.waitForChange(lock, refreshInterval);
        return phone_.view();
    }

    Phone& phone_;
    std::string shown_;
    Steady::time_point written_ = Steady::now();
};

std::vector<Route> Phone::routes()
{
    return {file("/", "text/html; charset=utf-8", page::html),
            file("/phone/phone.css", "text/css; charset=utf-8", page::style),
            file("/phone/phone.js", "text/javascript; charset=utf-8", page::script),
            {"phone", "GET", "/phone/events", [this](const Call&) { return watch(); }},
            {"phone", "GET", "/phone/submissions/*/messages", [this](const Call& call) { return messages(call); }}};
}

Answer Phone::watch()
{
    return {
        .contentType = "text/event-stream",
        .stream = [watch = std::make_shared<Watch>(*this)](const Answer::Write& write) { return watch->step(write); }};
}

const std::string& Phone::view()
{
    const auto now = Steady::now();
    if (state_.version() != version_ || now - made_ >= refreshInterval) {
        json view;
        accounts_.show(view);
        submissions_.show(view);
        view_ = Answer::of(view).body;
        version_ = state_.version();
        made_ = now;
    }
    return view_;
}

/// A page of the messages in a submission's archive, with the manifest; pages are counted from 0.
Answer Phone::messages(const Call& call)
{
    const auto page = wholeNumber(call.queryValue("page"));
    if (!page) throw ServiceError(400, "malformed_request", "page is not a number.");
    const std::string& id = call.arguments[0];
    auto lock = state_.lock();
    const auto archive = submissions_.archiveOf(id);
    lock.unlock();
    const std::lock_guard archivesLock(archivesMutex_);
    try {
        if (archives_.size() >= mostArchives && !archives_.contains(id)) archives_.clear();
        const MessagePages& pages = archives_.try_emplace(id, archive).first->second;
        return Answer::of({{"manifest", pages.manifest()},
                           {"count", pages.count()},
                           {"perPage", MessagePages::perPage},
                           {"page", *page},
                           {"messages", pages.page(*page)}});
    } catch (const ArchiveError& error) {
        throw ServiceError(422, "unreadable_archive", error.what());
    }
}

} // namespace vorn::sandbox
