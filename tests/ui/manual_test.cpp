#include <QFile>
#include <QMap>
#include <QMenuBar>
#include <QRegularExpression>

#include "app/command_ids.h"
#include "app/help/generated_texts.h"
#include "app/help/help_desk.h"
#include "app/help/manual_pages.h"
#include "app_fixture.h"
#include "effects/effect_table.h"
#include "view/ui/go_to_dialog.h"

namespace sonavel {
namespace {

QStringList TargetsIn(const QString& text) {
    static const QRegularExpression link(QStringLiteral("\\]\\(([^)]+)\\)"));
    QStringList targets;
    for (auto i = link.globalMatch(text); i.hasNext();) targets << i.next().captured(1);
    return targets;
}

TEST(Manual, HasEveryPageThatItsContentsAndLinksName) {
    TestApplication();
    QStringList reached;
    for (const ManualPage& page : ManualPages()) {
        const QString text = TextOfPage(QString::fromLatin1(page.name));
        EXPECT_TRUE(text.startsWith(QStringLiteral("# ") + QString::fromUtf8(page.title) + u'\n'))
            << page.name;
        EXPECT_FALSE(text.contains(QStringLiteral("<!--"))) << page.name;
        for (const QString& target : TargetsIn(text)) {
            EXPECT_TRUE(QFile::exists(QStringLiteral(":/manual/") + target))
                << page.name << " links to " << target.toStdString();
            if (QString::fromLatin1(page.name) == QStringLiteral("index")) reached << target;
        }
    }
    reached << QStringLiteral("index.md");
    for (const ManualPage& page : ManualPages())
        EXPECT_TRUE(reached.contains(QLatin1String(page.name) + QStringLiteral(".md")))
            << "the first page does not lead to " << page.name;
}

TEST(Manual, HasAPageOfEachEffectThatExplainsEveryControl) {
    TestApplication();
    for (const Effect& effect : Effects()) {
        const QString text =
            TextOfPage(QStringLiteral("effect-") + QString::fromLatin1(effect.name));
        ASSERT_FALSE(text.isEmpty()) << effect.name;
        for (const EffectParameter& parameter : effect.parameters) {
            EXPECT_TRUE(text.contains(QString::fromUtf8(parameter.label))) << parameter.key;
            // A band of the equalizer says all with its frequency.
            EXPECT_TRUE(parameter.explanation ||
                        QLatin1String(parameter.unit) == QLatin1String("dB"))
                << effect.name << ' ' << parameter.key << " explains nothing";
        }
    }
}

TEST(Manual, ListsTheKeysOfTheCommands) {
    for (const char* key : {"| `Ctrl+Z` |", "| `F12` |", "| `F1` |", "`Ctrl+W` or `Ctrl+F4`"})
        EXPECT_TRUE(KeysText().contains(QLatin1String(key))) << key;
}

TEST(Manual, IsSearchedForAllWordsInWhateverCase) {
    TestApplication();
    EXPECT_EQ(PagesWith({}).size(), static_cast<qsizetype>(ManualPages().size()));
    EXPECT_TRUE(
        PagesWith(QStringLiteral("tremolo SINE")).contains(QStringLiteral("effect-modulator")));
    EXPECT_TRUE(PagesWith(QStringLiteral("tremolo zebra")).isEmpty());
}

TEST(Manual, ASearchOpensThePageThatIsAboutIt) {
    TestApplication();
    const auto opened = [](const char* words, const char* current) {
        const QString wanted = QString::fromLatin1(words);
        return PageToOpen(PagesWith(wanted), wanted, QString::fromLatin1(current)).toStdString();
    };
    EXPECT_EQ(opened("dynamics", "index"), "effect-dynamics");
    EXPECT_EQ(opened("hearing SPACE", "space"), "hearing-in-space");
    EXPECT_EQ(opened("tremolo sine", "index"), "effect-modulator");
    EXPECT_EQ(opened("tremolo zebra", "keys"), "keys");
    EXPECT_EQ(opened("", "keys"), "keys");
}

// "Edit > Marker > List" and the key beside it, of every item below a menu.
void CollectItems(const QWidget& menu, const QString& above, QMap<QString, QString>& keys) {
    for (const QAction* action : menu.actions()) {
        QString name = action->text().section(u'\t', 0, 0).remove(u'&').remove(u'…');
        while (name.endsWith(u'.')) name.chop(1);
        const QString path = above.isEmpty() ? name : above + QStringLiteral(" > ") + name;
        const QString shown = action->text().section(u'\t', 1, 1);
        keys[path] = shown.isEmpty() ? action->shortcut().toString() : shown;
        if (action->menu()) CollectItems(*action->menu(), path, keys);
    }
}

// What the manual prints as a way through the menus, with the key that it names there.
std::vector<std::pair<QString, QString>> WaysNamedIn(QString text) {
    text.replace(QRegularExpression(QStringLiteral("\\[([^\\]]+)\\]\\([^)]+\\)")),
                 QStringLiteral("\\1"));
    static const QRegularExpression way(
        QStringLiteral("[*`]([A-Z][^*`>]* > [^*`]+)[*`](?: \\(`([^`]+)`\\))?"));
    std::vector<std::pair<QString, QString>> ways;
    for (auto i = way.globalMatch(text); i.hasNext();) {
        const QRegularExpressionMatch match = i.next();
        QString path = match.captured(1);
        while (path.endsWith(u'.')) path.chop(1);
        ways.emplace_back(path, match.captured(2));
    }
    return ways;
}

class ManualWindowTest : public AppFixture {
  protected:
    ManualWindow& Window() { return *App().Help().Window(); }
};

TEST_F(ManualWindowTest, EveryWayThroughTheMenusIsThereWithItsKey) {
    QMap<QString, QString> keys;
    Frame().Actions().Refresh();
    CollectItems(*Frame().menuBar(), {}, keys);
    int named = 0;
    for (const ManualPage& page : ManualPages())
        for (const auto& [way, key] : WaysNamedIn(TextOfPage(QLatin1String(page.name)))) {
            if (way.startsWith(QStringLiteral("Preferences > "))) continue;  // a page of a dialog
            ++named;
            EXPECT_TRUE(keys.contains(way)) << page.name << ": " << way.toStdString();
            EXPECT_TRUE(key.isEmpty() || keys[way] == key)
                << page.name << ": " << way.toStdString() << " has " << keys[way].toStdString();
        }
    EXPECT_GT(named, 30);
}

TEST_F(ManualWindowTest, OpensFromTheMenuAndFollowsItsLinksAndSearch) {
    Frame().Actions().Action(app_command::kManualKeys)->trigger();
    EXPECT_EQ(Window().CurrentPage(), QStringLiteral("keys"));
    Frame().Actions().Action(app_command::kManual)->trigger();
    EXPECT_EQ(Window().CurrentPage(), QStringLiteral("index"));
    auto* search = Window().findChild<QLineEdit*>();
    search->setText(QStringLiteral("tremolo"));
    EXPECT_EQ(Window().CurrentPage(), QStringLiteral("effect-modulator"));
    auto* page = Window().findChild<QTextBrowser*>();
    EXPECT_TRUE(page->toPlainText().contains(QStringLiteral("twentieths of a hertz")));
    EXPECT_EQ(page->textCursor().selectedText().toLower(), QStringLiteral("tremolo"));
    search->clear();
    Q_EMIT page->anchorClicked(QUrl(QStringLiteral("keys.md")));
    EXPECT_EQ(Window().CurrentPage(), QStringLiteral("keys"));
    page->backward();
    EXPECT_EQ(Window().CurrentPage(), QStringLiteral("effect-modulator"));
    Window().close();
}

TEST_F(ManualWindowTest, ItsContentsAreWholeAndItsPicturesThereWithLargeTexts) {
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSize(18);
    QApplication::setFont(large);
    ManualWindow window;
    window.ShowPage(QStringLiteral("effect-dynamics"));
    QApplication::processEvents();
    auto& contents = *window.findChild<QTreeWidget*>();
    for (QTreeWidgetItemIterator i(&contents); *i; ++i) {
        const QRect place = contents.visualItemRect(*i);
        EXPECT_LE(contents.fontMetrics().horizontalAdvance((*i)->text(0)), place.width())
            << (*i)->text(0).toStdString();
    }
    auto& page = *window.findChild<QTextBrowser*>();
    const auto picture =
        page.loadResource(QTextDocument::ImageResource, QUrl("qrc:/manual/effect-dynamics.png"))
            .value<QImage>();
    EXPECT_GT(picture.width(), 300);
    EXPECT_EQ(picture.devicePixelRatio(), 1);
    QApplication::setFont(usual);
}

TEST_F(ManualWindowTest, OpensAtTheDialogsPageByF1AndGoesWithTheDialog) {
    App();
    {
        GoToDialog dialog({}, &Frame());
        dialog.setModal(true);
        dialog.show();
        QTest::keyClick(dialog.focusWidget() ? dialog.focusWidget() : &dialog, Qt::Key_F1);
        ASSERT_TRUE(App().Help().Window());
        EXPECT_EQ(Window().CurrentPage(), QStringLiteral("window"));
        EXPECT_EQ(Window().parentWidget(), &dialog)
            << "else the dialog would keep it from being used";
    }
    EXPECT_FALSE(App().Help().Window());
}

}  // namespace
}  // namespace sonavel
