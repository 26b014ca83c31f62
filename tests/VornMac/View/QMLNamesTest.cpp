#include "tests/VornMac/View/ScreenFixture.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(Vorn_ViewPlugin)

namespace vorn {
namespace {

using testing::ModelFixture;
using testing::questJSON;
using testing::ScreenFixture;

constexpr const char* reader = R"(
    import QtQml
    import Vorn.View

    QtObject {
        required property ScreenModel model
        readonly property bool isFind: model.stepName === "find"
        readonly property bool isFound: model.isFound
        readonly property bool mayUpload: model.canUpload
        readonly property string title: model.text.title
        readonly property string line: model.text.status.text
        readonly property string point: model.consent.reads.points[1]
        readonly property string count: model.statisticsValues[0] ?? ""
        readonly property string label: Labels.account
        readonly property int bubbles: model.preview.rowCount()
        readonly property int last: ScreenModel.Access.NoDatabase
        function leave() { model.backToConsent() }
    }
)";

class QMLNames : public ::testing::Test {
protected:
    QMLNames()
    {
        engine_.addImportPath(":/qt/qml");
        fix_.fix.launchSignedIn();
        fix_.show();
        QQmlEngine::setObjectOwnership(&fix_.screen(), QQmlEngine::CppOwnership);
    }

    int argumentCount_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    QCoreApplication application_{argumentCount_, arguments_};
    ScreenFixture fix_;
    QQmlEngine engine_;
};

TEST_F(QMLNames, AreReadFollowedAndCalled)
{
    QQmlComponent component(&engine_);
    component.setData(reader, QUrl("qrc:/reader.qml"));
    const std::unique_ptr<QObject> object(
        component.createWithInitialProperties({{"model", QVariant::fromValue(&fix_.screen())}}));
    ASSERT_NE(object, nullptr) << component.errorString().toStdString();
    EXPECT_TRUE(object->property("isFind").toBool());
    EXPECT_FALSE(object->property("isFound").toBool());
    EXPECT_EQ(object->property("title").toString(), "Looking in Messages…");
    EXPECT_EQ(object->property("line").toString(), "Reading a private copy of your Messages history…");
    EXPECT_TRUE(object->property("point").toString().startsWith("Links in those messages"));
    EXPECT_EQ(object->property("label").toString(), "Account");

    fix_.fix.answer(ModelFixture::quest, questJSON());
    fix_.fix.runAll();
    EXPECT_TRUE(object->property("isFound").toBool());
    EXPECT_TRUE(object->property("mayUpload").toBool());
    EXPECT_EQ(object->property("count").toString(), "3");
    EXPECT_EQ(object->property("title").toString(), "Found on this Mac");

    ASSERT_TRUE(QMetaObject::invokeMethod(object.get(), "leave"));
    EXPECT_EQ(fix_.fix.model().step(), Step::consent);
    EXPECT_FALSE(object->property("isFind").toBool());

    EXPECT_EQ(object->property("last").toInt(), 2);
}

} // namespace
} // namespace vorn
