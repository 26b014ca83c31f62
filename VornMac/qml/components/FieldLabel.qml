import QtQuick

/// The heading of a part of a form.
Words {
    color: Theme.secondary
    font: Theme.fonts.label
    Accessible.role: Accessible.Heading
}
