#include "app/sound_closer.h"

#include "app/document_saver.h"
#include "platform/qt/message_box.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

Outcome SoundCloser::AskWhetherToSave(std::size_t index) {
    tell_(workspace_.StopActivity(index));
    CSoundDoc& document = *workspace_.At(index).document;
    if (!document.GetModified()) return Done();
    workspace_.Activate(index);
    const QString question = QObject::tr("Save changes to %1?").arg(Utf8Text(document.Title()));
    MessageBox box({.text = question,
                    .buttons = QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel},
                   parent_);
    switch (box.exec()) {
        case QMessageBox::Save:
            return DocumentSaver(workspace_, document, parent_).Save();
        case QMessageBox::Discard:
            return Done();
        default:
            return Cancelled();
    }
}

Outcome SoundCloser::Close(std::size_t index) {
    if (Outcome asked = AskWhetherToSave(index); !asked) return asked;
    workspace_.Close(index);
    return Done();
}

Outcome SoundCloser::CloseAll() {
    for (std::size_t i = 0; i < workspace_.Count(); ++i)
        if (Outcome asked = AskWhetherToSave(i); !asked) return asked;
    while (workspace_.Count() > 0) workspace_.Close(workspace_.Count() - 1);
    return Done();
}

Outcome SoundCloser::CloseOthers() {
    const CSoundDoc& kept = *workspace_.Active()->document;
    for (std::size_t i = 0; i < workspace_.Count(); ++i) {
        if (workspace_.At(i).document.get() == &kept) continue;
        if (Outcome asked = AskWhetherToSave(i); !asked) return asked;
    }
    workspace_.Activate(*workspace_.IndexOf(kept));
    for (std::size_t i = workspace_.Count(); i-- > 0;)
        if (workspace_.At(i).document.get() != &kept) workspace_.Close(i);
    return Done();
}

}  // namespace sonavel
