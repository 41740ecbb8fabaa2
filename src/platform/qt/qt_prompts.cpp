#include "platform/qt/qt_prompts.h"

#include <QApplication>
#include <QMessageBox>

#include "platform/qt/channel_conversion_dialog.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

QMessageBox::StandardButton Ask(QWidget* parent, std::string_view text, std::string_view caption,
                                QMessageBox::StandardButtons buttons) {
    const QString title = caption.empty() ? QStringLiteral("Sonavel") : Utf8Text(caption);
    return QMessageBox::question(parent, title, Utf8Text(text), buttons);
}

}  // namespace

QStringList QtPrompts::TakeHeldMessages() {
    holding_ = false;
    return std::exchange(held_, {});
}

QWidget* QtPrompts::ParentForBox() const {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    QWidget* active = QApplication::activeWindow();
    return active ? active : mainWindow_.data();
}

void QtPrompts::ShowMessage(std::string_view text) {
    if (holding_) {
        held_ << Utf8Text(text);
        return;
    }
    QMessageBox::warning(ParentForBox(), QStringLiteral("Sonavel"), Utf8Text(text));
}

void QtPrompts::ShowStatus(std::string_view text) {
    if (holding_) held_ << Utf8Text(text);
    if (statusSink_) statusSink_(Utf8Text(text));
}

bool QtPrompts::AskOkCancel(std::string_view text, std::string_view caption) {
    return Ask(ParentForBox(), text, caption, QMessageBox::Ok | QMessageBox::Cancel) ==
           QMessageBox::Ok;
}

bool QtPrompts::AskYesNo(std::string_view text, std::string_view caption) {
    return Ask(ParentForBox(), text, caption, QMessageBox::Yes | QMessageBox::No) ==
           QMessageBox::Yes;
}

std::optional<ChannelChoice> QtPrompts::AskChannelConversion(ChannelConversion conversion) {
    ChannelConversionDialog dialog(conversion, ParentForBox());
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Choice();
}

}  // namespace sonavel
