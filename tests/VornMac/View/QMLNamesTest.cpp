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
        readonly property bool isFind: model.step === ScreenModel.Step.Find
        readonly property bool isFound: model.scanPhase === ScreenModel.ScanPhase.Found
        readonly property bool mayUpload: model.availability === ScreenModel.Availability.Available && model.canUpload
        readonly property string count: model.messageCount
        readonly property int bubbles: model.preview.rowCount()
        readonly property var names: [
            ScreenModel.LinkPhase.Failed, ScreenModel.Access.NoDatabase, ScreenModel.ScanPhase.Failed,
            ScreenModel.UploadPhase.Failed, ScreenModel.Outcome.Expired
        ]
        function leave() { model.go(ScreenModel.Step.Upload) }
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

    fix_.fix.answer(ModelFixture::quest, questJSON());
    fix_.fix.runAll();
    EXPECT_TRUE(object->property("isFound").toBool());
    EXPECT_TRUE(object->property("mayUpload").toBool());
    EXPECT_EQ(object->property("count").toString(), "3");

    ASSERT_TRUE(QMetaObject::invokeMethod(object.get(), "leave"));
    EXPECT_EQ(fix_.fix.model().step(), Step::upload);
    EXPECT_FALSE(object->property("isFind").toBool());

    const std::vector<int> lastOfEach = {4, 2, 6, 4, 4};
    const QVariantList names = object->property("names").toList();
    ASSERT_EQ(static_cast<std::size_t>(names.size()), lastOfEach.size());
    for (std::size_t index = 0; index < lastOfEach.size(); ++index)
        EXPECT_EQ(names.at(static_cast<qsizetype>(index)).toInt(), lastOfEach.at(index));
}

} // namespace
} // namespace vorn
