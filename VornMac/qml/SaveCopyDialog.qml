import QtQuick.Dialogs
import Vorn.View

/// Asks where to save a copy of the archive.
FileDialog {
    id: root

    required property Everything page

    defaultSuffix: page.fileSuffix
    fileMode: FileDialog.SaveFile
    nameFilters: [page.fileKind]
    objectName: "saveCopy"
    selectedFile: page.suggestedFile
    onAccepted: page.saveCopy(selectedFile)
}
