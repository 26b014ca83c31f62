#pragma once

#include <QQuickPaintedItem>
#include <QString>
#include <qqmlregistration.h>

namespace vorn {

/// The dark modules of a QR code (ISO/IEC 18004, error correction level M), with room for four light ones all around.
/// It has no ground of its own: lay it on a light one, whatever the theme. A module is as many whole pixels of the
/// screen as fit, so that none is blurred.
class QRModules : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString payload READ payload WRITE setPayload NOTIFY payloadChanged)

public:
    explicit QRModules(QQuickItem* parent = nullptr);

    const QString& payload() const noexcept { return payload_; }
    /// Encoded as UTF-8. Draws nothing for an empty payload and for one that fits no code.
    void setPayload(const QString& payload);

    void paint(QPainter* painter) override;

signals:
    void payloadChanged();

private:
    QString payload_;
};

} // namespace vorn
