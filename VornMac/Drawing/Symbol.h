#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>
#include <qqmlregistration.h>

namespace vorn {

/// A vector symbol, drawn in one colour and as large as fits. `name` is that of a file in `symbols/`.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    explicit Symbol(QQuickItem* parent = nullptr);

    const QString& name() const noexcept { return name_; }
    void setName(const QString& name);
    const QColor& color() const noexcept { return color_; }
    /// Transparent, as at first, leaves the file's own colours.
    void setColor(const QColor& color);

    void paint(QPainter* painter) override;

signals:
    void nameChanged();
    void colorChanged();

private:
    QString name_;
    QColor color_ = Qt::transparent;
};

} // namespace vorn
