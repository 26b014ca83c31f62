#pragma once

#include <QQuickPaintedItem>
#include <qqmlregistration.h>

namespace vorn {

/// An item that is repainted whenever one of its properties changes. Derived classes name it with its namespace: Qt
/// copies the name, as it is written, into the description of types for QML.
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
