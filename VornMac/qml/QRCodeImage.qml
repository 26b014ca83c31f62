import QtQuick
import Vorn.Drawing

/// The code that links this Mac, for the phone's camera.
QRModules {
    Accessible.role: Accessible.Graphic
    Accessible.name: "QR code to link this Mac"
}
