// The selection of the table, and the buttons and texts that follow it.
#include <QFile>
#include <QLocale>

#include "catalogue/ui/catalogue_icons.h"
#include "catalogue/ui/catalogue_window.h"
#include "platform/qt/file_names.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

constexpr QRgb kErrorColour = 0xffd03434;

}  // namespace

std::vector<std::size_t> CatalogueWindow::SelectedEntries() const {
    std::vector<std::size_t> entries;
    for (const QItemSelectionRange& range : table_->selectionModel()->selection())
        for (int row = range.top(); range.left() == 0 && row <= range.bottom(); ++row)
            entries.push_back(model_.EntryAt(row));
    return entries;
}

std::optional<std::size_t> CatalogueWindow::CurrentEntry() const {
    const QModelIndex current = table_->currentIndex();
    if (!current.isValid()) return std::nullopt;
    return model_.EntryAt(current.row());
}

QString CatalogueWindow::PathOf(std::size_t entry) {
    return FileText(keeper_.Current().At(entry).path);
}

void CatalogueWindow::KeepSelection() {
    keptEntries_.clear();
    keptCurrent_ = CurrentEntry();
    for (const std::size_t entry : SelectedEntries()) {
        if (keptEntries_.size() <= entry) keptEntries_.resize(entry + 1);
        keptEntries_[entry] = true;
    }
}

void CatalogueWindow::RestoreSelection() {
    QItemSelection selection;
    QModelIndex current;
    int first = -1;  // of the run of selected rows that is being walked over
    const int rows = model_.rowCount();
    for (int row = 0; row <= rows; ++row) {
        const std::size_t entry = row < rows ? model_.EntryAt(row) : keptEntries_.size();
        const bool selected = entry < keptEntries_.size() && keptEntries_[entry];
        if (row < rows && entry == keptCurrent_) current = model_.index(row, 0);
        if (selected && first < 0) first = row;
        if (selected || first < 0) continue;
        selection.select(model_.index(first, 0), model_.index(row - 1, model_.columnCount() - 1));
        first = -1;
    }
    QItemSelectionModel& model = *table_->selectionModel();
    model.select(selection, QItemSelectionModel::ClearAndSelect);
    model.setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    if (current.isValid()) table_->scrollTo(current);
    keptCurrent_.reset();
}

void CatalogueWindow::UpdateActions() {
    const std::optional<std::size_t> current = CurrentEntry();
    const bool any = table_->selectionModel()->hasSelection();
    const bool playing = preview_.IsPlaying();
    const bool missing =
        current && keeper_.Current().At(*current).presence == FilePresence::kMissing;
    remove_->setEnabled(any);
    open_->setEnabled(any);
    play_->setEnabled(playing || current);
    play_->setText(playing ? tr("Stop") : tr("Play"));
    play_->setIcon(CatalogueIcon(playing ? "stop" : "play"));
    showFolder_->setEnabled(current.has_value());
    locate_->setEnabled(missing);
    check_->setEnabled(keeper_.IsOpen());
    UpdateCounts();
}

void CatalogueWindow::UpdateCounts() {
    if (!keeper_.IsOpen()) {
        counts_->setText(list_->IsEmpty() ? tr("No catalogue yet: drop sound files here")
                                          : tr("No catalogue is open"));
        return;
    }
    const auto number = [](auto count) {
        return QLocale().toString(static_cast<qlonglong>(count));
    };
    const Catalogue& catalogue = keeper_.Current();
    const QString pattern = catalogue.Count() == 1 ? tr("%1 sound") : tr("%1 sounds");
    QStringList parts{pattern.arg(number(catalogue.Count()))};
    if (const int rows = model_.rowCount(); static_cast<std::size_t>(rows) != catalogue.Count())
        parts << tr("%1 shown").arg(number(rows));
    if (const std::size_t missing = catalogue.MissingCount(); missing > 0)
        parts << tr("%1 missing").arg(number(missing));
    if (const std::size_t selected = SelectedEntries().size(); selected > 1)
        parts << tr("%1 selected").arg(number(selected));
    counts_->setText(parts.join(QStringLiteral(", ")));
}

void CatalogueWindow::Tell(const Outcome& outcome) {
    if (!outcome) ShowError(Utf8Text(outcome.Reason()));
}

void CatalogueWindow::TellOf(const QString& name, const Outcome& outcome) {
    if (!outcome) ShowError(name + QStringLiteral(": ") + Utf8Text(outcome.Reason()));
}

void CatalogueWindow::ShowNote(const QString& text, NoteKind kind) {
    QPalette palette = counts_->palette();
    if (kind == NoteKind::kError) palette.setColor(QPalette::WindowText, QColor(kErrorColour));
    note_->setPalette(palette);
    note_->setText(text);
    note_->setToolTip(text);
}

}  // namespace sonavel
