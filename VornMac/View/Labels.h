#pragma once

#include "VornMac/Text/AboutText.h"
#include "VornMac/Text/AccessText.h"
#include "VornMac/Text/AccountText.h"
#include "VornMac/Text/CommonText.h"
#include "VornMac/Text/Consent.h"
#include "VornMac/Text/LinkText.h"
#include "VornMac/Text/Preview.h"
#include "VornMac/Text/QuestText.h"
#include "VornMac/Text/UploadText.h"
#include "VornMac/View/PreviewList.h"

#include <QObject>
#include <QString>
#include <qqmlregistration.h>

namespace vorn {

/// Constant texts of the window. Threads: the model's.
class Labels : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(QString windowTitle READ windowTitle CONSTANT)
    Q_PROPERTY(QString about READ about CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString help READ help CONSTANT)
    Q_PROPERTY(QString helpAddress READ helpAddress CONSTANT)
    Q_PROPERTY(QString privacy READ privacy CONSTANT)
    Q_PROPERTY(QString privacyAddress READ privacyAddress CONSTANT)
    Q_PROPERTY(QString notices READ notices CONSTANT)
    Q_PROPERTY(QString account READ account CONSTANT)
    Q_PROPERTY(QString signOut READ signOut CONSTANT)

    Q_PROPERTY(QString stepIsDone READ stepIsDone CONSTANT)
    Q_PROPERTY(QString stepIsNext READ stepIsNext CONSTANT)

    Q_PROPERTY(QString codeName READ codeName CONSTANT)
    Q_PROPERTY(QString codeIsRead READ codeIsRead CONSTANT)
    Q_PROPERTY(QString codeLifetime READ codeLifetime CONSTANT)

    Q_PROPERTY(QString conversation READ conversation CONSTANT)
    Q_PROPERTY(QString assistantName READ assistantName CONSTANT)
    Q_PROPERTY(QString assistantInitial READ assistantInitial CONSTANT)
    Q_PROPERTY(QString messagesService READ messagesService CONSTANT)
    Q_PROPERTY(vorn::PreviewList* exampleConversation READ exampleConversation CONSTANT)

    Q_PROPERTY(QString showInFinder READ showInFinder CONSTANT)
    Q_PROPERTY(QString settingsPath READ settingsPath CONSTANT)
    Q_PROPERTY(QString settingsPane READ settingsPane CONSTANT)
    Q_PROPERTY(QString settingsExplanation READ settingsExplanation CONSTANT)
    Q_PROPERTY(QString thisApplication READ thisApplication CONSTANT)
    Q_PROPERTY(QString someTerminal READ someTerminal CONSTANT)
    Q_PROPERTY(QString someBackupUtility READ someBackupUtility CONSTANT)

    Q_PROPERTY(QString archiveName READ archiveName CONSTANT)
    Q_PROPERTY(QString questName READ questName CONSTANT)

public:
    Labels();

    static QString windowTitle() { return vorn::windowTitle; }
    static QString about() { return aboutVorn; }
    static QString version(); ///< of the running application
    static QString help() { return vornHelp; }
    static QString helpAddress() { return vorn::helpAddress; }
    static QString privacy() { return vorn::privacy; }
    static QString privacyAddress() { return vorn::privacyAddress; }
    static QString notices() { return vorn::notices; }
    static QString account() { return vorn::account; }
    static QString signOut() { return vorn::signOutOfThisMac; }

    static QString stepIsDone() { return vorn::stepIsDone; } ///< for a screen reader, like `stepIsNext`
    static QString stepIsNext() { return vorn::stepIsNext; }

    static QString codeName() { return vorn::codeName; } ///< for a screen reader
    static QString codeIsRead() { return vorn::codeIsRead; }
    static QString codeLifetime() { return vorn::codeLifetime; }

    static QString conversation() { return vorn::conversation; } ///< for a screen reader
    static QString assistantName() { return vorn::assistantName; }
    static QString assistantInitial() { return vorn::assistantInitial; }
    static QString messagesService() { return vorn::messagesService; }
    PreviewList* exampleConversation() { return &example_; }

    static QString showInFinder() { return vorn::showInFinder; }
    static QString settingsPath() { return vorn::settingsPath; }
    static QString settingsPane() { return vorn::settingsPane; }
    static QString settingsExplanation() { return vorn::settingsExplanation; }
    static QString thisApplication() { return vorn::thisApplication; }
    static QString someTerminal() { return vorn::someTerminal; }
    static QString someBackupUtility() { return vorn::someBackupUtility; }

    static QString archiveName() { return vorn::archiveName; }
    static QString questName() { return vorn::questName; }

    /// A row of System Settings, for a screen reader.
    Q_INVOKABLE static QString switchText(const QString& application, bool isOn);

private:
    PreviewList example_;
};

} // namespace vorn
