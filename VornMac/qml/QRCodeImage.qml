import QtQuick
import Vorn.Drawing
import Vorn.View

/// The code that links this Mac, for the phone's camera.
QRModules {
    Accessible.role: Accessible.Graphic
    Accessible.name: Labels.codeName
}
