#pragma once

#include "Platform/Async/MainContext.h"
#include "VornMac/Model/AppModel.h"
#include "VornMac/Text/CommonText.h"
#include "VornMac/Text/EverythingText.h"
#include "VornMac/View/EverythingList.h"
#include "VornMac/View/ShownText.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <qqmlregistration.h>

namespace vorn {

/// The page over the find screen that shows everything an upload would contain and what was left out, and saves a copy
/// of the archive. Closes by itself when its content goes: when the step changes, the session ends, or the chat is
/// looked for again. Threads: the model's.
class Everything : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A ScreenModel has one.")

    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(vorn::EverythingList* messages READ messages CONSTANT)
    Q_PROPERTY(QString words READ words WRITE setWords NOTIFY wordsChanged)
    Q_PROPERTY(QString listed READ listed NOTIFY listedChanged)
    Q_PROPERTY(bool isComplete READ isComplete NOTIFY listedChanged)
    Q_PROPERTY(QString nothingFound READ nothingFound NOTIFY listedChanged)
    Q_PROPERTY(QStringList leftOutLabels READ leftOutLabels NOTIFY isOpenChanged)
    Q_PROPERTY(QStringList leftOutCounts READ leftOutCounts NOTIFY isOpenChanged)
    Q_PROPERTY(QStringList leftOutReasons READ leftOutReasons NOTIFY isOpenChanged)
    Q_PROPERTY(QString leftOutNote READ leftOutNote NOTIFY isOpenChanged)
    Q_PROPERTY(QStringList besides READ besides NOTIFY isOpenChanged)
    Q_PROPERTY(vorn::ShownStatus copyStatus READ copyStatus NOTIFY copyStatusChanged)
    Q_PROPERTY(bool isSaving READ isSaving NOTIFY copyStatusChanged)
    Q_PROPERTY(QUrl suggestedFile READ suggestedFile CONSTANT)

    // Constant texts.
    Q_PROPERTY(QString seeLabel READ seeLabel CONSTANT)
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString subtitle READ subtitle CONSTANT)
    Q_PROPERTY(QString searchLabel READ searchLabel CONSTANT)
    Q_PROPERTY(QString clearLabel READ clearLabel CONSTANT)
    Q_PROPERTY(QString leftOutHeading READ leftOutHeading CONSTANT)
    Q_PROPERTY(QString besidesHeading READ besidesHeading CONSTANT)
    Q_PROPERTY(QString saveLabel READ saveLabel CONSTANT)
    Q_PROPERTY(QString backLabel READ backLabel CONSTANT)
    Q_PROPERTY(QString fileKind READ fileKind CONSTANT)
    Q_PROPERTY(QString fileSuffix READ fileSuffix CONSTANT)

public:
    /// `context` is the model's. Both outlive this, and `context` is shut down first. Without them the page stays
    /// closed, and its operations do nothing.
    Everything(AppModel* model, MainContext* context);
    ~Everything() override;

    bool isOpen() const noexcept { return isOpen_; }
    EverythingList* messages() { return &messages_; }
    QString words() const { return words_; }
    void setWords(const QString& words);
    QString listed() const; ///< how many messages are listed
    bool isComplete() const { return messages_.isComplete(); }
    QString nothingFound() const; ///< shown when a finished search has no matches; otherwise empty
    QStringList leftOutLabels() const { return leftOut_.labels; }
    QStringList leftOutCounts() const { return leftOut_.counts; }   ///< one for each row
    QStringList leftOutReasons() const { return leftOut_.reasons; } ///< one for each row
    QString leftOutNote() const { return leftOut_.note; }
    QStringList besides() const { return leftOut_.besides; }
    ShownStatus copyStatus() const;
    bool isSaving() const;
    static QUrl suggestedFile();

    static QString seeLabel() { return seeEverything; }
    static QString title() { return everythingTitle; }
    static QString subtitle() { return yourChat; }
    static QString searchLabel() { return searchMessages; }
    static QString clearLabel() { return clearSearch; }
    static QString leftOutHeading() { return vorn::leftOutHeading; }
    static QString besidesHeading() { return vorn::besidesHeading; }
    static QString saveLabel() { return saveCopyLabel; }
    static QString backLabel() { return goBack; }
    static QString fileKind() { return archiveKind; }
    static QString fileSuffix();

    /// Does nothing until a chat is found.
    Q_INVOKABLE void open();
    Q_INVOKABLE void close();
    /// Saves a copy of the archive to the local file `file`.
    Q_INVOKABLE void saveCopy(const QUrl& file);

signals:
    void isOpenChanged();
    void wordsChanged();
    void listedChanged();
    void copyStatusChanged();

private:
    struct LeftOut {
        QStringList labels;
        QStringList counts;
        QStringList reasons;
        QString note;
        QStringList besides;
    };

    bool isFound() const;
    void closeUnlessFound();
    void setOpen(bool isOpen);

    AppModel* model_;
    MainContext* context_;
    bool isOpen_ = false;
    QString words_;
    LeftOut leftOut_;
    EverythingList messages_;
};

} // namespace vorn
