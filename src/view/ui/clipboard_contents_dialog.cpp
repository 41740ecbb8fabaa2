#include "view/ui/clipboard_contents_dialog.h"

#include <QPushButton>

#include "sound/sound_texts.h"

namespace sonavel {

namespace {

void AddFact(QFormLayout& form, const QString& label, const QString& text) {
    auto* value = new QLabel(text);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form.addRow(label, value);
}

}  // namespace

ClipboardContentsDialog::ClipboardContentsDialog(const ClipboardContents& contents,
                                                 ClipboardPreview& preview, QWidget* parent)
    : FormDialog(tr("Clipboard Contents"), parent, QDialogButtonBox::Ok), preview_(preview) {
    QFormLayout& form = AddForm();
    AddFact(form, tr("Attributes:"), QString::fromStdString(contents.attributes));
    AddFact(form, tr("Total Bytes:"), QString::number(contents.totalBytes));
    AddFact(form, tr("Samples:"), QString::number(contents.samples));
    AddFact(form, tr("Length:"), QString::fromStdString(TimeText(contents.seconds)));
    QPushButton* play = Buttons().addButton(tr("&Preview"), QDialogButtonBox::ActionRole);
    play->setEnabled(contents.samples > 0);
    connect(play, &QPushButton::clicked, this, [this] { preview_.Play(); });
}

void ClipboardContentsDialog::done(int result) {
    preview_.Stop();
    FormDialog::done(result);
}

}  // namespace sonavel
