#include "effects/ui/mnemonics.h"

#include <QAbstractButton>
#include <QKeySequence>
#include <QLabel>

namespace sonavel {

namespace {

using Keys = QList<QKeySequence>;

bool BeginsAWord(const QString& text, qsizetype place) {
    return place == 0 || !text[place - 1].isLetterOrNumber();
}

// The place of the first letter or digit whose key is free; words' first ones come before the
// others.
qsizetype FreePlace(const QString& text, const Keys& taken) {
    for (const bool firstOfWord : {true, false}) {
        for (qsizetype place = 0; place < text.size(); ++place) {
            if (!text[place].isLetterOrNumber()) continue;
            if (firstOfWord && !BeginsAWord(text, place)) continue;
            const QKeySequence key = QKeySequence::mnemonic(u'&' + text.sliced(place, 1));
            if (!taken.contains(key)) return place;
        }
    }
    return -1;
}

template <class Widget>
void Give(Widget& widget, Keys& taken) {
    QString text = widget.text();
    const qsizetype place = FreePlace(text, taken);
    if (place < 0) return;
    widget.setText(text.insert(place, u'&'));
    taken << QKeySequence::mnemonic(text);
}

}  // namespace

void GiveMnemonics(QWidget& dialog, const QStringList& alsoShown) {
    Keys taken;
    for (const QString& text : alsoShown) taken << QKeySequence::mnemonic(text);
    const auto buttons = dialog.findChildren<QAbstractButton*>();
    for (const QAbstractButton* button : buttons) taken << QKeySequence::mnemonic(button->text());
    for (QAbstractButton* button : buttons)
        if (QKeySequence::mnemonic(button->text()).isEmpty()) Give(*button, taken);
    for (QLabel* label : dialog.findChildren<QLabel*>())
        if (label->buddy()) Give(*label, taken);
}

}  // namespace sonavel
