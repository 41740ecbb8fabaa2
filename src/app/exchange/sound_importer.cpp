#include "app/exchange/sound_importer.h"

#include "exchange/open_refusal.h"
#include "platform/qt/file_names.h"
#include "platform/qt/utf8_text.h"
#include "platform/settings.h"

namespace sonavel {

namespace {

// Lets the person cancel while a decoder looks at a file.
class ProbeWatcher : public CodecWatcher {
  public:
    explicit ProbeWatcher(ProgressFactory& progress) : window_(progress.CreateProgress("Import")) {}

    GoOn Watch() override { return window_->Poll() ? GoOn::kNo : GoOn::kYes; }

  private:
    std::unique_ptr<ProgressWindow> window_;
};

QString NameOf(const QString& path) {
    return ShownFileText(FileText(FilePath(path).filename()));
}

Outcome Named(const QString& path, Outcome outcome) {
    if (!outcome.IsFailed()) return outcome;
    return Failed(NameOf(path).toStdString() + ": " + outcome.Reason());
}

bool HaveSameChannels(const SoundFileDescription& one, const SoundFileDescription& other) {
    return one.channels == other.channels && one.speakers == other.speakers;
}

}  // namespace

Result<SoundFileHead> SoundImporter::Probe(const QString& path) const {
    ProbeWatcher watcher(workspace_.Services().progress);
    return ProbeImport(FilePath(path), workspace_.Services().codecs, watcher);
}

std::vector<RefusedFile> SoundImporter::RefusedOf(const QStringList& paths) const {
    std::vector<RefusedFile> refused;
    for (const QString& path : paths) {
        const std::filesystem::path file = FilePath(path);
        if (workspace_.IndexOfPath(file) || !OpenRefuses(file)) continue;
        if (const Result<SoundFileHead> head = Probe(path))
            refused.push_back({path, Utf8Text(OpenRefusalReason(file, head->description))});
    }
    return refused;
}

bool SoundImporter::MayImport(const std::vector<RefusedFile>& refused) const {
    ProfileFile options = workspace_.Services().folder.Options();
    const int stored = StoredNumber(options.Read(), SettingId::kImportRefused);
    if (RowOf(SettingId::kImportRefused).Effective(stored)) return true;
    RefusedFilesBox box(refused, window_);
    if (!box.AskWhetherToImport()) return false;
    // A folder that cannot be written to only means that the question comes again.
    if (box.IsForGood()) static_cast<void>(WriteNumber(options, SettingId::kImportRefused, 1));
    return true;
}

Outcome SoundImporter::Offer(const std::vector<RefusedFile>& refused) {
    if (refused.empty()) return Done();
    if (!MayImport(refused)) return Cancelled();
    QStringList paths;
    for (const RefusedFile& file : refused) paths << file.path;
    return ImportAll(paths, Asking::kChannels);
}

Outcome SoundImporter::Import(const QStringList& paths) {
    return ImportAll(paths, Asking::kDepthAndChannels);
}

Outcome SoundImporter::ImportAll(const QStringList& paths, Asking asking) {
    using enum ImportQuestion::Place;
    answer_.reset();
    Outcome all = Done();
    for (const QString& path : paths) {
        const Place place{asking, path == paths.back() ? kLast : kMoreFollow};
        const Outcome one = Named(path, ImportOne(path, place));
        if (one.IsFailed() || (all && !one)) all = one;
        if (!one && !one.IsFailed()) break;
    }
    return all;
}

Outcome SoundImporter::ImportOne(const QString& path, const Place& place) {
    const std::filesystem::path file = FilePath(path);
    if (const auto open = workspace_.IndexOfPath(file)) {
        workspace_.Activate(*open);
        return Done();
    }
    const Result<SoundFileHead> head = Probe(path);
    if (!head) return head.Ended();
    const Result<ImportChoice> choice = ChoiceFor(path, head->description, place);
    if (!choice) return choice.Ended();
    if (Outcome imported = workspace_.ImportDocument(file, *choice); !imported) return imported;
    imported_(path);
    return Done();
}

Result<ImportChoice> SoundImporter::ChoiceFor(const QString& path,
                                              const SoundFileDescription& description,
                                              const Place& place) {
    const bool many = HasManyChannels(description);
    const bool deep = IsDeeperThan16(description) && place.asking == Asking::kDepthAndChannels;
    if (!many && !deep) return ImportChoice{};
    if (answer_ && (!many || HaveSameChannels(description, answer_->description)))
        return many ? answer_->choice : ImportChoice{.depth = answer_->choice.depth};
    using Question = ImportQuestion;
    ImportDialog dialog({.fileName = NameOf(path),
                         .description = description,
                         .depth = deep ? Question::Depth::kAsked : Question::Depth::kNotAsked,
                         .place = place.place},
                        window_);
    if (dialog.exec() != QDialog::Accepted) return Cancelled();
    if (dialog.HoldsForAll()) answer_ = Answer{description, dialog.Choice()};
    return dialog.Choice();
}

}  // namespace sonavel
