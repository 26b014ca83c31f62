#pragma once

#include "VornMac/Drawing/PaintedItem.h"

#include <QString>
#include <qqmlregistration.h>

namespace vorn {

/// The dark modules of a QR code (ISO/IEC 18004, error correction level M), with room for a quiet zone of four modules
/// around them. It has no background: place it on a light one, whatever the theme. A module takes as many whole screen
/// pixels as fit, so that none is blurred.
class QRModules : public vorn::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString payload MEMBER payload_ NOTIFY looksChanged)

public:
    explicit QRModules(QQuickItem* parent = nullptr);

    const QString& payload() const noexcept { return payload_; }

    /// Draws nothing for an empty payload, or for one that fits no code.
    void paint(QPainter* painter) override;

private:
    QString payload_; ///< encoded as UTF-8
};

} // namespace vorn
