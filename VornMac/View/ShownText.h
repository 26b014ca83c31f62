#pragma once

#include "VornMac/Text/Consent.h"
#include "VornMac/Text/RewardStatus.h"
#include "VornMac/Text/ScreenText.h"
#include "VornMac/Text/UploadText.h"

#include <string>
#include <vector>

#include <QObject>
#include <QString>
#include <QStringList>
#include <qqmlregistration.h>

// The texts of the screens in QML's types.
namespace vorn {

QString shown(const std::string& text);
QStringList shown(const std::vector<std::string>& texts);

/// A `StatusText`. Its tone is a `StatusLine.Tone`.
class ShownStatus {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(int tone MEMBER tone)
    Q_PROPERTY(QString spokenTone MEMBER spokenTone)
    Q_PROPERTY(QString text MEMBER text)

public:
    ShownStatus() = default;
    explicit ShownStatus(const StatusText& status);
    bool operator==(const ShownStatus&) const = default;

    int tone = 0;
    QString spokenTone; ///< empty without a text
    QString text;
};

/// An amount with a `RewardStatus`. Its standing is a `RewardCard.Standing`.
class ShownReward {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString amount MEMBER amount)
    Q_PROPERTY(bool isAmount MEMBER isAmount)
    Q_PROPERTY(int standing MEMBER standing)
    Q_PROPERTY(QString status MEMBER status)

public:
    ShownReward() = default;
    ShownReward(const std::string& amount, const RewardStatus& status);
    bool operator==(const ShownReward&) const = default;

    QString amount;
    bool isAmount = false; ///< false if `amount` is a phrase for an unknown amount
    int standing = 0;
    QString status;
};

/// An `UploadBar` in numbers and texts.
class ShownUploadBar {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(double value MEMBER value)
    Q_PROPERTY(bool isBusy MEMBER isBusy)
    Q_PROPERTY(QString percents MEMBER percents)
    Q_PROPERTY(QString percentage MEMBER percentage)
    Q_PROPERTY(QString amounts MEMBER amounts)

public:
    ShownUploadBar() = default;
    ShownUploadBar(const UploadBar& bar, const std::string& amounts);
    bool operator==(const ShownUploadBar&) const = default;

    double value = 0; ///< 0…1
    bool isBusy = false;
    QString percents;   ///< empty while nothing is measured
    QString percentage; ///< for a screen reader
    QString amounts;    ///< the amounts and the time left
};

/// A `ScreenText`.
class ShownText {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString subtitle MEMBER subtitle)
    Q_PROPERTY(QString heading MEMBER heading)
    Q_PROPERTY(QStringList lead MEMBER lead)
    Q_PROPERTY(QStringList steps MEMBER steps)
    Q_PROPERTY(vorn::ShownStatus status MEMBER status)
    Q_PROPERTY(vorn::ShownStatus remark MEMBER remark)
    Q_PROPERTY(QStringList hints MEMBER hints)
    Q_PROPERTY(QString note MEMBER note)
    Q_PROPERTY(QString retry MEMBER retry)
    Q_PROPERTY(QString primary MEMBER primary)
    Q_PROPERTY(QString back MEMBER back)
    Q_PROPERTY(QString caption MEMBER caption)

public:
    ShownText() = default;
    explicit ShownText(const ScreenText& text);
    bool operator==(const ShownText&) const = default;

    QString title;
    QString subtitle;
    QString heading;
    QStringList lead;
    QStringList steps;
    ShownStatus status;
    ShownStatus remark;
    QStringList hints;
    QString note;
    QString retry;
    QString primary;
    QString back;
    QString caption;
};

/// A section of a `Consent`.
class ShownSection {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString heading MEMBER heading)
    Q_PROPERTY(QStringList points MEMBER points)

public:
    ShownSection() = default;
    explicit ShownSection(const Consent::Section& section);
    bool operator==(const ShownSection&) const = default;

    QString heading;
    QStringList points;
};

/// The sections and confirmations of a `Consent`.
class ShownConsent {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(vorn::ShownSection reads MEMBER reads)
    Q_PROPERTY(vorn::ShownSection neverReads MEMBER neverReads)
    Q_PROPERTY(vorn::ShownSection next MEMBER next)
    Q_PROPERTY(QString understandsUpload MEMBER understandsUpload)
    Q_PROPERTY(QString agreesToShare MEMBER agreesToShare)

public:
    ShownConsent() = default;
    explicit ShownConsent(const Consent& consent);
    bool operator==(const ShownConsent&) const = default;

    ShownSection reads;
    ShownSection neverReads;
    ShownSection next;
    QString understandsUpload;
    QString agreesToShare;
};

} // namespace vorn
