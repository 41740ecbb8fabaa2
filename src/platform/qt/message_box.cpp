#include "platform/qt/message_box.h"

#include <QAbstractButton>

namespace sonavel {

namespace {

struct ButtonText {
    QMessageBox::StandardButton button;
    const char* text;
};

// In the order in which one of them becomes the default.
constexpr ButtonText kButtonTexts[] = {
    {QMessageBox::Ok, "&OK"}, {QMessageBox::Yes, "&Yes"},         {QMessageBox::Save, "&Save"},
    {QMessageBox::No, "&No"}, {QMessageBox::Discard, "&Discard"}, {QMessageBox::Cancel, "&Cancel"},
};

}  // namespace

MessageBox::MessageBox(const MessageBoxTexts& texts, QWidget* parent)
    : QMessageBox(texts.icon, texts.caption.isEmpty() ? QStringLiteral("Sonavel") : texts.caption,
                  texts.text, texts.buttons, parent) {
    for (const ButtonText& entry : kButtonTexts) {
        QAbstractButton* shown = button(entry.button);
        if (!shown) continue;
        shown->setText(tr(entry.text));
        if (!defaultButton()) setDefaultButton(entry.button);
    }
}

}  // namespace sonavel
