#pragma once

#include <optional>

#include <QObject>
#include <QString>
#include <qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace vorn {

/// How the user's system asks windows to look. One object for the process, which QML shares; the theme follows the
/// system while the program runs. Threads: the main one, once there is a QGuiApplication.
class Appearance : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(bool isDark READ isDark NOTIFY isDarkChanged)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY reducesMotionChanged)
    Q_PROPERTY(double textScale READ textScale NOTIFY textScaleChanged)
    Q_PROPERTY(QString fontFamily READ fontFamily CONSTANT)

public:
    enum class Theme { light, dark };

    static Appearance& shared();
    /// For QML's engine, which must not own it.
    static Appearance* create(QQmlEngine* engine, QJSEngine* scripts);

    bool isDark() const noexcept { return isDark_; }
    bool reducesMotion() const noexcept { return reducesMotion_; }
    double textScale() const noexcept { return textScale_; } ///< 1 for the sizes as designed, at most 2
    QString fontFamily() const;

    /// Forces `theme`; if absent, follows the system again.
    void setTheme(std::optional<Theme> theme);
    void setReducesMotion(bool reduces);
    void setTextScale(double scale);

signals:
    void isDarkChanged();
    void reducesMotionChanged();
    void textScaleChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Appearance();
    void followSystem();
    void update();

    std::optional<Theme> forced_;
    bool isDark_ = false;
    bool reducesMotion_ = false;
    double textScale_ = 1;
};

} // namespace vorn
