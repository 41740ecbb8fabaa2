#include "platform/qt/qt_prompts.h"

#include <QApplication>
#include <QPushButton>

#include "platform/qt/channel_conversion_dialog.h"
#include "platform/qt/message_box.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

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
    MessageBox({.text = Utf8Text(text), .icon = QMessageBox::Warning}, ParentForBox()).exec();
}

void QtPrompts::ShowStatus(std::string_view text) {
    if (holding_) held_ << Utf8Text(text);
    if (statusSink_) statusSink_(Utf8Text(text));
}

bool QtPrompts::AskOkCancel(std::string_view text, std::string_view caption) {
    MessageBox box({.text = Utf8Text(text),
                    .caption = Utf8Text(caption),
                    .buttons = QMessageBox::Ok | QMessageBox::Cancel},
                   ParentForBox());
    return box.exec() == QMessageBox::Ok;
}

bool QtPrompts::AskYesNo(std::string_view text, std::string_view caption) {
    MessageBox box({.text = Utf8Text(text),
                    .caption = Utf8Text(caption),
                    .buttons = QMessageBox::Yes | QMessageBox::No},
                   ParentForBox());
    return box.exec() == QMessageBox::Yes;
}

ChangedFileAnswer QtPrompts::AskChangedFile() {
    const QString text = QObject::tr("The file was changed by another program.");
    MessageBox box({.text = text, .buttons = QMessageBox::Cancel, .icon = QMessageBox::Warning},
                   ParentForBox());
    const auto* overwrite = box.addButton(QObject::tr("&Overwrite"), QMessageBox::DestructiveRole);
    auto* saveAs = box.addButton(QObject::tr("&Save As..."), QMessageBox::AcceptRole);
    box.setDefaultButton(saveAs);
    box.exec();
    if (box.clickedButton() == overwrite) return ChangedFileAnswer::kOverwrite;
    return box.clickedButton() == saveAs ? ChangedFileAnswer::kSaveAs : ChangedFileAnswer::kCancel;
}

std::optional<ChannelChoice> QtPrompts::AskChannelConversion(ChannelConversion conversion) {
    ChannelConversionDialog dialog(conversion, ParentForBox());
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Choice();
}

}  // namespace sonavel
