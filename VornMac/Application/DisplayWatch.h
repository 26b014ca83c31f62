#pragma once

#include <mutex>
#include <vector>

#include <QString>
#include <qlogging.h>

namespace vorn {

/// Exists while the application object is constructed. Without a display, Qt aborts the process with unhelpful advice;
/// with this object the process exits with status 1 and one helpful line. The messages of a successful start are held
/// back, and passed on when this object is destroyed. Threads: the main one. At most one object at a time.
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
    QtMessageHandler previousHandler_;
    std::mutex mutex_; ///< plugins log from threads of their own
    std::vector<Message> held_;
};

} // namespace vorn
