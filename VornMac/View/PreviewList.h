#pragma once

#include "VornMac/Model/AppModel.h"

#include <vector>

#include <QAbstractListModel>
#include <QString>
#include <qqmlregistration.h>

namespace vorn {

/// The last messages of an export, as their bubbles show them: at most six, whatever the export's size. Roles: `text`,
/// and `fromMe`, whether the user wrote it. Threads: the model's.
class PreviewList : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("ScreenModel makes it.")

public:
    enum Role { textRole = Qt::UserRole, fromMeRole };

    using QAbstractListModel::QAbstractListModel;

    /// Shows the end of `found`, which may be null. Keeps nothing of it.
    void show(const AppModel::Export& found);
    /// Shows what `other` shows now.
    void show(const PreviewList& other);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    struct Bubble {
        QString text;
        bool fromMe = false;
        bool operator==(const Bubble&) const = default;
    };
    void show(std::vector<Bubble> bubbles);

    std::vector<Bubble> bubbles_;
};

} // namespace vorn
