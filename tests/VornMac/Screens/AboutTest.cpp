#include "tests/VornMac/Window/Scenes.h"

#include <gmock/gmock.h>

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

// The About panel and the links in it.
namespace vorn::testing {
namespace {

using ::testing::_;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;
using ::testing::StartsWith;

/// Records the addresses instead of opening them.
class Browser : public QObject {
    Q_OBJECT

public:
    Browser()
    {
        for (const char* scheme : {"https", "file"}) QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~Browser() override
    {
        for (const char* scheme : {"https", "file"}) QDesktopServices::unsetUrlHandler(scheme);
    }
    Browser(Browser&&) = delete;

    Q_INVOKABLE void open(const QUrl& address) { addresses.push_back(address.toString().toStdString()); }

    std::vector<std::string> addresses;
};

TEST(About, NamesTheApplicationAndItsVersion)
{
    QCoreApplication::setApplicationVersion("1.2.3");
    WindowFixture fix;
    play(fix, "2-consent");
    EXPECT_THAT(fix.words(), Not(Contains("Version 1.2.3")));
    fix.press(Qt::Key_F1);
    for (const char* text : {"Vorn", "Version 1.2.3", "Vorn Help", "Privacy", "Third-Party Notices"})
        EXPECT_THAT(fix.words(), Contains(text));
    EXPECT_THAT(fix.spoken(), Contains("Dialog: About Vorn"));
    fix.press(Qt::Key_Escape);
    EXPECT_THAT(fix.words(), Not(Contains("Version 1.2.3")));
    EXPECT_EQ(fix.model.model().step(), Step::consent);
}

TEST(About, LeadsToHelpPrivacyAndNoticesByKey)
{
    Browser browser;
    WindowFixture fix;
    play(fix, "2-consent");
    fix.press(Qt::Key_F1);
    EXPECT_EQ(fix.focused(), "Vorn Help");
    EXPECT_TRUE(fix.window().activeFocusItem()->property("visualFocus").toBool()) << "it was opened by key";
    fix.press(Qt::Key_Return);
    fix.press(Qt::Key_Tab);
    EXPECT_EQ(fix.focused(), "Privacy");
    fix.press(Qt::Key_Space);
    fix.press(Qt::Key_Tab);
    EXPECT_EQ(fix.focused(), "Third-Party Notices");
    fix.press(Qt::Key_Return);
    ASSERT_THAT(browser.addresses, ElementsAre("https://vorn.example/help", "https://vorn.example/privacy", _));
    QFile notices(QUrl(QString::fromStdString(browser.addresses.back())).toLocalFile());
    ASSERT_TRUE(notices.open(QFile::ReadOnly));
    EXPECT_THAT(notices.readAll().toStdString(), StartsWith("Third-party notices\n==="));
}

} // namespace
} // namespace vorn::testing

#include "AboutTest.moc"
