#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QColor>
#include <qqmlregistration.h>

namespace vorn {

/// A speech bubble behind a message: round corners, and a tail at the bottom of the speaker's side. Its body leaves
/// `tailWidth` free on both sides, so that bubbles with and without a tail line up.
class BubbleShape : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY looksChanged)
    Q_PROPERTY(Tail tail MEMBER tail_ NOTIFY looksChanged)
    Q_PROPERTY(double tailRoom READ tailRoom CONSTANT)

public:
    enum Tail { NoTail, LeftTail, RightTail };
    Q_ENUM(Tail)
    static constexpr double tailWidth = 8;

    using PaintedItem::PaintedItem;

    static double tailRoom() { return tailWidth; }

    void paint(QPainter* painter) override;

private:
    QColor color_ = Qt::black;
    Tail tail_ = NoTail;
};

} // namespace vorn
