#include "app/key_sets.h"

#include <QStringList>

#include "app/command_ids.h"
#include "platform/qt/person_settings.h"
#include "view/commands/view_commands.h"

namespace sonavel {

namespace {

constexpr const char* kStoredKeys = "Keys";

}  // namespace

ChangedKeys UsualKeys() {
    return {
        {app_command::kSave, QStringLiteral("Ctrl+S")},
        {app_command::kSaveAs, QStringLiteral("Ctrl+Shift+S; F12")},
        {view_command::kCrossfadeMix, QStringLiteral("Ctrl+Shift+M")},
        {view_command::kRedo, QStringLiteral("Ctrl+Shift+Z; Ctrl+Y")},
        {view_command::kZoomTimeIn, QStringLiteral("Up; Ctrl++; Ctrl+=")},
        {view_command::kZoomTimeOut, QStringLiteral("Down; Ctrl+-")},
    };
}

QString KeysAsText(const ChangedKeys& keys) {
    QString text;
    for (const auto& [id, sequences] : keys)
        text += QStringLiteral("%1=%2\n").arg(id).arg(sequences);
    return text;
}

std::optional<ChangedKeys> KeysFromText(const QString& text) {
    ChangedKeys keys;
    for (const QString& line : text.split(u'\n', Qt::SkipEmptyParts)) {
        const qsizetype sign = line.indexOf(u'=');
        bool isNumber = false;
        const int id = line.left(sign).toInt(&isNumber);
        if (sign < 0 || !isNumber) return std::nullopt;
        const QString sequences = line.mid(sign + 1).trimmed();
        for (const QKeySequence& key : ShortcutsFromText(sequences.toUtf8().constData()))
            if (key.isEmpty() || key[0].key() == Qt::Key_unknown) return std::nullopt;
        keys[id] = sequences;
    }
    return keys;
}

ChangedKeys StoredKeys() {
    return KeysFromText(PersonSettings().value(QLatin1String(kStoredKeys)).toString())
        .value_or(ChangedKeys());
}

void StoreKeys(const ChangedKeys& keys) {
    PersonSettings().setValue(QLatin1String(kStoredKeys), KeysAsText(keys));
}

}  // namespace sonavel
