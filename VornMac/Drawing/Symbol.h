#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <QString>
#include <qqmlregistration.h>

namespace vorn {

/// A vector symbol, drawn in one colour and as large as fits. `name` is that of a file in `symbols/`, without ".svg".
class Symbol : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name MEMBER name_ NOTIFY looksChanged)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY looksChanged)

public:
    explicit Symbol(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

private:
    QString name_;
    QColor color_ = Qt::transparent; ///< keeps the file's own colours
};

} // namespace vorn
