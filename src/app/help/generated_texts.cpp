#include "app/help/generated_texts.h"

#include <QKeySequence>
#include <QRegularExpression>

#include "app/application_commands.h"
#include "app/document_commands.h"
#include "app/exchange/sound_exporter.h"
#include "app/frame_commands.h"
#include "effects/effect_table.h"
#include "spatial/ui/spatial_commands.h"
#include "view/commands/view_commands.h"
#include "view/ui/command_menu.h"

namespace sonavel {
namespace {

QString NumberText(double number, int decimals) {
    return QString::number(number, 'f', std::max(decimals, 0));
}

QString WordsText(const EffectParameter& parameter) {
    QStringList words;
    for (const char* word : parameter.words) words << QString::fromUtf8(word);
    const QString start = words.value(static_cast<int>(parameter.start));
    return QStringLiteral("%1; at first %2").arg(words.join(QStringLiteral(", ")), start);
}

QString RangeText(const EffectParameter& parameter) {
    if (parameter.decimals == kSwitch) return QStringLiteral("on or off");
    if (!parameter.words.empty()) return WordsText(parameter);
    const QString unit = *parameter.unit ? u' ' + QString::fromUtf8(parameter.unit) : QString();
    return QStringLiteral("%1 to %2%3, at first %4")
        .arg(NumberText(parameter.least, parameter.decimals),
             NumberText(parameter.greatest, parameter.decimals), unit,
             NumberText(parameter.start, parameter.decimals));
}

QString SentenceOf(const char* explanation) {
    QString text = explanation ? QString::fromUtf8(explanation) : QString();
    if (!text.isEmpty()) text[0] = text[0].toUpper();
    return text;
}

// What a cell of a table may hold.
QString CellText(QString text) {
    return text.replace(u'|', QStringLiteral("\\|"));
}

void AddKeys(QString& rows, const CommandInfo& info) {
    QStringList keys;
    for (const QKeySequence& key : ShortcutsFromText(info.shortcut))
        keys << u'`' + key.toString(QKeySequence::PortableText) + u'`';
    if (keys.isEmpty()) return;
    rows += QStringLiteral("| %1 | %2 |\n")
                .arg(keys.join(QStringLiteral(" or ")), CellText(QString::fromUtf8(info.prompt)));
}

template <class Table>
void AddTableOfKeys(QString& text, const QString& title, const Table& table) {
    QString rows;
    for (const auto& row : table) AddKeys(rows, row.info);
    if (rows.isEmpty()) return;
    text += QStringLiteral("**%1**\n\n| Key | Does |\n|---|---|\n%2\n").arg(title, rows);
}

}  // namespace

QString ControlsText(const Effect& effect) {
    QString text = QObject::tr("| Control | Range | What it does |\n|---|---|---|\n");
    for (const EffectParameter& parameter : effect.parameters)
        text += QStringLiteral("| %1 | %2 | %3 |\n")
                    .arg(QString::fromUtf8(parameter.label), RangeText(parameter),
                         CellText(SentenceOf(parameter.explanation)));
    return text;
}

QString KeysText() {
    QString text;
    AddTableOfKeys(text, QObject::tr("Sound, cursor and zoom"), ViewCommands());
    AddTableOfKeys(text, QObject::tr("File"), DocumentCommands());
    AddTableOfKeys(text, QObject::tr("Export"), ExportCommands());
    AddTableOfKeys(text, QObject::tr("Windows"), FrameCommands());
    AddTableOfKeys(text, QObject::tr("Program"), ApplicationCommands());
    return text;
}

QString WithGeneratedTexts(QString page) {
    static const QRegularExpression controls(QStringLiteral("<!-- controls: ([\\w-]+) -->"));
    if (const auto match = controls.match(page); match.hasMatch())
        if (const Effect* effect = FindEffect(match.captured(1).toStdString()))
            page.replace(match.captured(0), ControlsText(*effect));
    return page.replace(QStringLiteral("<!-- keys -->"), KeysText());
}

}  // namespace sonavel
