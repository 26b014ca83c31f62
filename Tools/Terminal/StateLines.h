#pragma once

#include "VornMac/Model/AppModel.h"

#include <cstdio>
#include <string>

namespace vorn {

/// Prints every change of a model's state as one line of JSON, for programs: an object with one key, the property's
/// name, such as {"step":"find"} or {"uploadPhase":{"phase":"uploading","fraction":0.5}}. Absent values are null. No
/// line holds a message or a token; "qrPayload" is the secret that a phone must be shown. Threads: the model's own.
class StateLines : public QObject {
public:
    /// Writes to `file`, which the caller owns.
    StateLines(const AppModel& model, std::FILE* file);

    /// Whether every line so far has been written.
    bool hasWritten() const noexcept { return written_; }

private:
    template <class Write>
    void follow(void (AppModel::*signal)(), Write write);
    void print(const std::string& line);

    const AppModel& model_;
    std::FILE* file_;
    bool written_ = true;
};

} // namespace vorn
