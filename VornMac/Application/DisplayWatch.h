#pragma once

#include <mutex>
#include <vector>

#include <QString>
#include <qlogging.h>

namespace vorn {

/// Covers the construction of the application object. Without a display, Qt aborts the process with advice that does
/// not help; with this object the process exits with status 1 and one line that does. Warnings of a successful start
/// are passed on at the end. Threads: the main one; one at a time.
class DisplayWatch {
public:
    DisplayWatch();
    ~DisplayWatch();
    DisplayWatch(DisplayWatch&&) = delete;

private:
    struct Message {
        QtMsgType type;
        QString text;
    };

    static void take(QtMsgType type, const QMessageLogContext& context, const QString& text);

    static DisplayWatch* installed;
    QtMessageHandler before_;
    std::mutex mutex_; ///< plugins have threads of their own
    std::vector<Message> held_;
};

} // namespace vorn
