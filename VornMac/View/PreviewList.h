#pragma once

#include "VornMac/Model/AppModel.h"
#include "VornMac/Text/Preview.h"

#include <vector>

#include <QAbstractListModel>
#include <QString>
#include <qqmlregistration.h>

namespace vorn {

/// Messages shown as bubbles. Roles: `text`; `spoken`, the same with its sender, for a screen reader; and `fromMe`,
/// whether the user is the sender. Threads: the model's.
class PreviewList : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("ScreenModel makes it.")

public:
    enum Role { textRole = Qt::UserRole, spokenRole, fromMeRole };

    using QAbstractListModel::QAbstractListModel;

    /// Shows the last messages of `exportResult`, which may be null: at most six, however many there are. Keeps no
    /// reference to it.
    void show(const AppModel::ExportResult& exportResult);
    void show(const std::vector<PreviewedMessage>& messages);
    /// Shows what `other` shows now.
    void show(const PreviewList& other);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    struct Bubble {
        QString text;
        QString spoken;
        bool fromMe = false;
        bool operator==(const Bubble&) const = default;
    };
    void showBubbles(std::vector<Bubble> bubbles);

    std::vector<Bubble> bubbles_;
};

} // namespace vorn
