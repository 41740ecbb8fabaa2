// Files whose names are not UTF-8, wherever they come from.
#include "platform/qt/file_names.h"

#include <QComboBox>
#include <QMimeData>

#include "app_fixture.h"
#include "platform/qt/open_files_dialog.h"
#include "properties/ui/property_texts.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr char kKoreanName[] = "\xB8\xB6\xC4\xBF & \xEB\x91\x90.wav";  // two encodings in one
constexpr char kKorean949[] = "\xB8\xB6\xC4\xBF.wav";
constexpr char kLatinName[] = "caf\xE9 b.wav";

TEST(FileNamesTest, EveryNameComesBackAsItWas) {
    std::vector<std::string> names{
        "/a/plain.wav", "/a/\xEB\x91\x90.wav", "/a/\xF0\x9F\x98\x80",      kKoreanName, kLatinName,
        "\xED\xB2\x80", "\xF0\x9F\x98",        "\xFF\xF0\x9F\x98\x80\x80", ""};
    for (int byte = 1; byte < 256; ++byte) names.push_back({'a', static_cast<char>(byte), 'b'});
    for (const std::string& name : names) {
        EXPECT_EQ(FilePath(FileText(name)).native(), name);
        EXPECT_EQ(FilePath(FileTextOf(FileUrl("/" + name))).native(), "/" + name);
    }
    EXPECT_EQ(FileText("/a/\xEB\x91\x90.wav"), QStringLiteral("/a/두.wav"));
    EXPECT_EQ(FileTextOf(QUrl(QStringLiteral("http://example.org/a.wav"))), QString());
    EXPECT_EQ(ShownFileText(FileText(kKorean949)), QStringLiteral("마커.wav"));
    EXPECT_EQ(ShownFileText(FileText(kLatinName)), QStringLiteral("caf? b.wav"));
}

class OddNamesTest : public AppFixture {
  protected:
    QString OddFile(const char* name) {
        WavFile("plain.wav");
        fs::rename(folder_ / "plain.wav", folder_ / name);
        return FileText(folder_ / name);
    }
};

TEST_F(OddNamesTest, OpenWithReadableTitlesAndStayTheSameFile) {
    const QString file = OddFile(kKorean949);
    ASSERT_TRUE(App().OpenFile(file));
    ASSERT_TRUE(App().OpenFile(file));
    EXPECT_EQ(Sounds().Count(), 1u);
    QApplication::processEvents();
    EXPECT_EQ(Frame().windowTitle(), QStringLiteral("Sonavel - 마커.wav[*]"));
    EXPECT_EQ(FileRows(Active())[1].value, ShownFileText(file));
    EXPECT_EQ(FileRows(Active())[3].value, QStringLiteral("8044 Bytes"));
    Active().Sound().SetSample(0, 0, 42);
    ASSERT_TRUE(Active().SaveDocument(Active().Path()));
    EXPECT_EQ(ReadFileBytes(folder_ / kKorean949)[44], 128 - 42);
}

TEST_F(OddNamesTest, AreKeptAmongTheRecentFiles) {
    const QString file = OddFile(kLatinName);
    ASSERT_TRUE(App().OpenFile(file));
    EXPECT_EQ(RecentFiles().Paths(), QStringList{file});
    QMenu menu;
    RecentFiles recent;
    recent.ShowIn(menu);
    EXPECT_EQ(menu.actions()[0]->text(), "&1  " + ShownFileText(file));
    QString chosen;
    QObject::connect(&recent, &RecentFiles::Chosen, [&](const QString& path) { chosen = path; });
    menu.actions()[0]->trigger();
    EXPECT_EQ(chosen, file);
}

TEST_F(OddNamesTest, OpenWhenDropped) {
    QMimeData data;
    const QString file = OddFile(kLatinName);
    data.setData(QStringLiteral("text/uri-list"), FileUrl(FilePath(file)).toEncoded() + "\r\n");
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Frame(), &enter);
    QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Frame(), &drop);
    QApplication::processEvents();
    ASSERT_EQ(Sounds().Count(), 1u);
    EXPECT_EQ(Active().Path(), folder_ / kLatinName);
}

TEST_F(OddNamesTest, StandBelowTheFilesInTheDialogThatOpensThem) {
    const QString file = OddFile(kLatinName);
    WriteFileBytes(folder_ / "no sound \xE9.txt", {});
    WriteFileBytes(folder_ / "plain.wav", {});
    fs::create_directory(folder_ / "folder \xE9.wav");
    const QString folder = QString::fromStdString(folder_.Path().string());
    OpenFilesDialog dialog(QStringLiteral("Open"), folder,
                           QStringLiteral("Waves (*.wav *.au);;All Files (*)"), nullptr);
    auto* names = dialog.findChild<QComboBox*>(QStringLiteral("oddNames"));
    ASSERT_TRUE(names);
    ASSERT_EQ(names->count(), 1);
    EXPECT_FALSE(names->isHidden());
    EXPECT_EQ(names->itemText(0), QStringLiteral("caf? b.wav"));
    dialog.selectNameFilter(QStringLiteral("All Files (*)"));
    Q_EMIT dialog.filterSelected(dialog.selectedNameFilter());
    EXPECT_EQ(names->count(), 2);
    Q_EMIT names->activated(0);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.Chosen(), QStringList{file});

    fs::create_directory(folder_ / "elsewhere");
    OpenFilesDialog elsewhere(QStringLiteral("Open"), folder + QStringLiteral("/elsewhere"),
                              QStringLiteral("All Files (*)"), nullptr);
    EXPECT_TRUE(elsewhere.findChild<QComboBox*>(QStringLiteral("oddNames"))->isHidden());
}

}  // namespace
}  // namespace sonavel
