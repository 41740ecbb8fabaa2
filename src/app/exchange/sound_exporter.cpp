#include "app/exchange/sound_exporter.h"

#include <algorithm>

#include "app/exchange/export_writing.h"
#include "platform/qt/person_settings.h"

namespace sonavel {

namespace {

constexpr const char* kKindKey = "Export/Kind";

SoundFileKind KindChosenLast() {
    const int stored = PersonSettings().value(kKindKey).toInt();
    for (const ExportKind& row : ExportKinds())
        if (static_cast<int>(row.kind) == stored) return row.kind;
    return SoundFileKind::kWav;
}

std::string ExtensionOf(SoundFileKind kind) {
    const std::vector<ExportKind> kinds = ExportKinds();
    const auto found = std::ranges::find(kinds, kind, &ExportKind::kind);
    return found != kinds.end() ? found->extension : std::string();
}

}  // namespace

bool SoundExporter::HasFrames() const {
    return sound_.document->Sound().GetFrameCount() > 0;
}

bool SoundExporter::HasSelection() const {
    return sound_.view->State().HasSelection();
}

Outcome SoundExporter::Export() {
    return Ask({QObject::tr("Export"), KindChosenLast(), {}, Whole()});
}

Outcome SoundExporter::SaveCopy() {
    const SoundFileKind own = ExportKindOf(sound_.document->Path()).value_or(SoundFileKind::kWav);
    return Ask({QObject::tr("Save a Copy As"), own, " copy", Whole()});
}

Outcome SoundExporter::ExportSelection() {
    const FrameRange range = sound_.view->State().GetSelection();
    return Ask({QObject::tr("Export Selection As"), KindChosenLast(), " selection", range});
}

FrameRange SoundExporter::Whole() const {
    return {0, sound_.document->Sound().GetFrameCount()};
}

ExportQuestion SoundExporter::QuestionOf(const Wish& wish) const {
    const CSoundDoc& document = *sound_.document;
    ExportQuestion question;
    question.title = wish.title;
    question.own = document.Path();
    question.proposed.kind = wish.kind;
    question.proposed.depth = ExportDepth(wish.kind, document.Sound(), document.Origin());
    question.proposed.tagValues = document.Tags();
    // Beside the sound's own file, or where the program was started.
    const std::string name =
        document.Path().empty() ? document.Title() : document.Path().stem().string();
    question.proposed.path =
        document.Path().parent_path() / (name + wish.nameEnd + ExtensionOf(wish.kind));
    question.depthsOf = DepthsOf;
    question.notice = [this, range = wish.range](const ExportAnswer& answer) {
        return Notice(range, answer);
    };
    return question;
}

ExportNotice SoundExporter::Notice(FrameRange range, const ExportAnswer& answer) const {
    ExportNotice notice = NoticeOfExport(*sound_.document, range, answer);
    if (workspace_.IndexOfPath(answer.path))
        notice.refusal = QObject::tr("This file is open in a window. Choose another name.");
    return notice;
}

Outcome SoundExporter::Ask(const Wish& wish) {
    ExportDialog dialog(QuestionOf(wish), parent_);
    if (dialog.exec() != QDialog::Accepted) return Cancelled();
    const ExportAnswer answer = dialog.Answer();
    PersonSettings().setValue(kKindKey, static_cast<int>(answer.kind));
    return WriteExport(*sound_.document, wish.range, answer);
}

}  // namespace sonavel
