// Scripts run from the window: what is said of how they ended.
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>

#include "app/command_ids.h"
#include "effects/effect_table.h"
#include "ui/app_fixture.h"
#include "view/commands/view_commands.h"

namespace sonavel {
namespace {

class EditorScriptsTest : public AppFixture {
  protected:
    EditorScriptsTest() {
        programFolder_.Options().SetInteger("__SOUND_GENERAL_OPTIONS", "SAVE UNDO REDO INFOMATION",
                                            1);
    }
    Outcome RunText(std::string_view text) {
        WriteFileBytes(folder_ / "edit.txt", BytesOf(text));
        return App().Scripts().RunFile(folder_ / "edit.txt");
    }
};

// Notes the texts of the next script's output and closes it.
struct OutputReader {
    OutputReader() {
        timer.callOnTimeout([this] {
            auto* dialog = qobject_cast<ScriptOutputDialog*>(QApplication::activeModalWidget());
            if (!dialog) return;
            timer.stop();
            summary = dialog->findChild<QLabel*>("script summary")->text();
            printed = dialog->findChild<QPlainTextEdit*>("script output")->toPlainText();
            dialog->reject();
        });
        timer.start(5);
    }
    QTimer timer;
    QString summary, printed;
};

TEST_F(EditorScriptsTest, OneUndoTakesTheWholeScriptBack) {
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    const std::vector<std::uint8_t> before(Active().Sound().Bytes().begin(),
                                           Active().Sound().Bytes().end());
    ASSERT_TRUE(RunText("select 100 200; delete; reverse; marker-add 5"));
    EXPECT_EQ(StatusText(), "The script has run: a sound was changed.");
    EXPECT_EQ(Active().Sound().GetFrameCount(), 7900u);
    Run(view_command::kUndo);
    EXPECT_TRUE(std::ranges::equal(Active().Sound().Bytes(), before));
    EXPECT_FALSE(Active().CanUndo());
}

TEST_F(EditorScriptsTest, SaysTheLineThatFailedAndShowsWhatWasPrinted) {
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    {
        const BoxAnswer box(QMessageBox::Ok);
        EXPECT_TRUE(RunText("reverse\n\nmute; cut").IsFailed());
        EXPECT_TRUE(box.Text().contains("Line 3: cut: Nothing is selected."))
            << box.Text().toStdString();
    }
    EXPECT_FALSE(Active().GetModified());
    const OutputReader shown;
    ASSERT_TRUE(RunText("new bits=16; info"));
    EXPECT_EQ(shown.summary, "The script has run: no sound was changed, a sound was opened.");
    EXPECT_TRUE(shown.printed.startsWith("document 2 title=")) << shown.printed.toStdString();
    EXPECT_EQ(Sounds().Count(), 2u);
}

TEST_F(EditorScriptsTest, WhatWasDoneIsCopiedAsAScriptThatDoesItAgain) {
    const QString path = WavFile("a.wav");
    ASSERT_TRUE(App().OpenFile(path));
    EXPECT_TRUE(App().Scripts().CopySteps().IsFailed());
    Sounds().Active()->view->State().SetSelection(10, 500);
    Run(view_command::kDelete);
    Run(effect_command::kReverse);
    Run(app_command::kCopyAsScript);
    const QString script = QGuiApplication::clipboard()->text();
    EXPECT_EQ(script,
              "# What was done to a.wav since it was opened\nselect 10 500\ndelete\n"
              "select 0 0\ncursor 10\nreverse\n");
    const std::vector<std::uint8_t> edited(Active().Sound().Bytes().begin(),
                                           Active().Sound().Bytes().end());
    Run(view_command::kUndo);
    Run(view_command::kUndo);
    ASSERT_TRUE(RunText(script.toStdString()));
    EXPECT_TRUE(std::ranges::equal(Active().Sound().Bytes(), edited));
}

}  // namespace
}  // namespace sonavel
