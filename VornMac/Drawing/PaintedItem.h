#pragma once

#include <QQuickPaintedItem>
#include <qqmlregistration.h>

namespace vorn {

/// An item that is painted anew whenever its properties change. Derived classes name it with its namespace: the
/// description of types for QML copies the name as it is written.
class PaintedItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit PaintedItem(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent)
    {
        connect(this, &PaintedItem::looksChanged, this, [this] { update(); });
    }

signals:
    void looksChanged();
};

} // namespace vorn
