#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <qqmlregistration.h>

namespace vorn {

/// A bar with round ends, filled from the left with a gradient of two colours; a square one is a disc. The gradient
/// spans the whole bar, so its colour changes as it fills.
class AccentBar : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(double sweep READ sweep WRITE setSweep NOTIFY sweepChanged)
    Q_PROPERTY(QColor startColor MEMBER startColor_ NOTIFY coloursChanged)
    Q_PROPERTY(QColor endColor MEMBER endColor_ NOTIFY coloursChanged)
    Q_PROPERTY(QColor trackColor MEMBER trackColor_ NOTIFY coloursChanged)

public:
    explicit AccentBar(QQuickItem* parent = nullptr);

    double value() const noexcept { return value_; } ///< 0…1, how much is filled
    void setValue(double value);

    /// Where a light stands that runs along the bar: it enters at 0 and has left at 1. Below 0 there is none.
    double sweep() const noexcept { return sweep_; }
    void setSweep(double sweep);

    void paint(QPainter* painter) override;

signals:
    void valueChanged();
    void sweepChanged();
    void coloursChanged();

private:
    void fill(QPainter& painter, double from, double to) const;

    double value_ = 1;
    double sweep_ = -1;
    QColor startColor_ = Qt::black;
    QColor endColor_ = Qt::black;
    QColor trackColor_ = Qt::transparent;
};

} // namespace vorn
