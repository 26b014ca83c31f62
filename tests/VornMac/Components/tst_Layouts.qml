import QtQuick
import QtTest
import Vorn.Components

TestCase {
    id: test
    name: "Layouts"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: title
        TwoToneTitle {
            primary: "Found"
            secondary: "Your chat"
            width: 300
        }
    }
    Component {
        id: panel
        PreviewPanel {
            caption: "Only here."
            width: 440
            height: 300

            Item {
                objectName: "content"
                anchors.fill: parent
            }
        }
    }
    Component {
        id: layout
        OnboardingLayout {
            position: "Step 3 of 6"
            step: 2
            subtitle: "Your chat"
            title: "Found"
            totalSteps: 6
            width: 1180
            height: 760

            Item {
                objectName: "form"
                width: 100
                height: 100
            }
            preview: Item {
                objectName: "preview"
                anchors.fill: parent
            }
        }
    }

    function texts(item) {
        return Array.from(item.children).filter(child => child.visible && child.lineCount !== undefined);
    }
    function frameOf(root, name) {
        const item = findChild(root, name);
        verify(item, name);
        return item.mapToItem(root, 0, 0, item.width, item.height);
    }

    function test_titleHasTwoTonesAndSpeaksOnce() {
        const root = createTemporaryObject(title, test);
        compare(texts(root).map(text => text.text), ["Found", "Your chat"]);
        verify(texts(root)[0].color !== texts(root)[1].color);
        compare(root.Accessible.role, Accessible.Heading);
        compare(root.Accessible.name, "Found Your chat");
    }
    function test_panelHoldsItsContentAboveItsCaption() {
        const root = createTemporaryObject(panel, test);
        const content = frameOf(root, "content");
        compare(content.x, 26);
        compare(content.y, 26);
        compare(content.width, 440 - 52);
        const caption = texts(root).find(text => text.text === "Only here.");
        verify(caption);
        verify(caption.y >= content.y + content.height);
        verify(caption.y + caption.height <= 300 - 26 + 1);
    }
    function test_panelGivesItsContentTheRoomOfAMissingCaption() {
        const root = createTemporaryObject(panel, test, { caption: "" });
        compare(frameOf(root, "content").height, 300 - 52);
    }
    function test_layoutHasTheFormBesideThePreview() {
        const root = createTemporaryObject(layout, test);
        waitForRendering(root);
        const form = frameOf(root, "form");
        const preview = frameOf(root, "preview");
        compare(preview.width, 440);
        verify(form.x + form.width < preview.x);
        verify(preview.x + preview.width <= 1180);
    }
    function test_textIsNeverMarkup() {
        const words = createTemporaryObject(title, test, { primary: "<b>bold</b>" });
        compare(texts(words)[0].textFormat, Text.PlainText);
    }
}
