#include <QPushButton>

#include "app/command_ids.h"
#include "app/welcome_page.h"
#include "app_fixture.h"
#include "platform/qt/message_box.h"
#include "support/patience.h"

namespace sonavel {
namespace {

class WelcomePageTest : public AppFixture {
  protected:
    WelcomePage& Page() { return *Frame().findChild<WelcomePage*>(); }
    QStringList Buttons() {
        QStringList texts;
        for (const QPushButton* button : Page().findChildren<QPushButton*>())
            texts << button->text();
        return texts;
    }
};

TEST_F(WelcomePageTest, SaysWhatToDoWhileThereIsNoSound) {
    Frame().Recent().Add(WavFile("b & c.wav"));
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    QApplication::processEvents();
    EXPECT_FALSE(Page().isVisible());
    Run(app_command::kClose);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Page().isVisible(); }, kPatienceMs));
    EXPECT_EQ(Buttons(), (QStringList{QStringLiteral("&Open"), QStringLiteral("&Record"),
                                      QStringLiteral("&New"), QStringLiteral("&Manual"),
                                      QStringLiteral("a.wav"), QStringLiteral("b && c.wav")}));
    Page().findChildren<QPushButton*>().back()->click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Page().isVisible(); }, kPatienceMs));
    EXPECT_EQ(Active().Title(), "b & c.wav");
}

TEST_F(WelcomePageTest, StaysInTheMiddleAndRunsCommands) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return Page().isVisible(); }, kPatienceMs));
    Frame().resize(900, 700);
    QApplication::processEvents();
    const QRect room = Page().parentWidget()->rect();
    EXPECT_TRUE(room.contains(Page().geometry()));
    EXPECT_LE(std::abs(Page().geometry().center().x() - room.center().x()), 1);
    Page().findChildren<QPushButton*>()[3]->click();
    ASSERT_TRUE(App().Help().Window());
    App().Help().Window()->close();
}

TEST(MessageBoxMeaning, StandsBelowAMessageThatIsKoreanAlone) {
    TestApplication();
    const MessageBox korean({.text = QStringLiteral("드라이버 활성화 실패")});
    EXPECT_EQ(korean.informativeText(), QStringLiteral("The sound driver could not be started."));
    const MessageBox english({.text = QStringLiteral("no device driver present")});
    EXPECT_EQ(english.informativeText(), QString());
}

}  // namespace
}  // namespace sonavel
