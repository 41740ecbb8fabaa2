#include "app/exchange/sound_exporter.h"

#include <QFileDialog>
#include <algorithm>

#include "app/exchange/export_writing.h"
#include "app/exchange/regions_dialog.h"
#include "platform/code_page_949.h"
#include "platform/qt/file_names.h"
#include "platform/qt/open_files_dialog.h"
#include "platform/qt/person_settings.h"
#include "platform/qt/utf8_text.h"
#include "view/commands/label_commands.h"

namespace sonavel {

namespace {

constexpr const char* kKindKey = "Export/Kind";

SoundFileKind KindChosenLast() {
    const int stored = PersonSettings().value(kKindKey).toInt();
    for (const ExportKind& row : ExportKinds())
        if (static_cast<int>(row.kind) == stored) return row.kind;
    return SoundFileKind::kWav;
}

QString LabelFilters() {
    return QObject::tr("Labels (*.txt *.csv *.vtt *.cue)");
}

}  // namespace

bool SoundExporter::HasMarkers() const {
    return HasFrames() && !sound_.document->Sound().Markers().Empty();
}

Outcome SoundExporter::ExportRegions() {
    RegionsDialog dialog(*sound_.document, KindChosenLast(), parent_);
    if (dialog.exec() != QDialog::Accepted) return Cancelled();
    const Result<RegionExport> regions = dialog.Regions();
    if (!regions) return regions.Ended();
    CSoundDoc& document = *sound_.document;
    document.NoteWriting(regions->folder / "regions");
    return sonavel::ExportRegions(*regions, document.Sound(), document.Extras(),
                                  document.Services().codecs, document.Sound().FileHost(),
                                  [](const std::filesystem::path&, FrameRange) {});
}

Outcome SoundExporter::ImportLabels() {
    const QString chosen = OpenFilesDialog::AskOne(QObject::tr("Import Markers"), LabelFolder(),
                                                   LabelFilters(), parent_);
    return chosen.isEmpty() ? Cancelled() : ImportMarkers(*sound_.view, FilePath(chosen));
}

Outcome SoundExporter::ExportLabels() {
    QFileDialog dialog(parent_, QObject::tr("Export Markers"), LabelFolder(), LabelFilters());
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("txt"));
    dialog.selectFile(Utf8Text(DisplayText(sound_.document->Title())).section(u'.', 0, 0) +
                      QStringLiteral(".txt"));
    if (dialog.exec() != QDialog::Accepted) return Cancelled();
    return ExportMarkers(*sound_.view, FilePath(dialog.selectedFiles().value(0)));
}

QString SoundExporter::LabelFolder() const {
    return FileText(sound_.document->Path().parent_path());
}

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
