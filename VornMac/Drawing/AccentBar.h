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
    Q_PROPERTY(QColor startColor MEMBER startColor_ NOTIFY coloursChanged)
    Q_PROPERTY(QColor endColor MEMBER endColor_ NOTIFY coloursChanged)
    Q_PROPERTY(QColor trackColor MEMBER trackColor_ NOTIFY coloursChanged)

public:
    explicit AccentBar(QQuickItem* parent = nullptr);

    double value() const noexcept { return value_; } ///< 0…1, how much is filled
    void setValue(double value);

    void paint(QPainter* painter) override;

signals:
    void valueChanged();
    void coloursChanged();

private:
    double value_ = 1;
    QColor startColor_ = Qt::black;
    QColor endColor_ = Qt::black;
    QColor trackColor_ = Qt::transparent;
};

} // namespace vorn
