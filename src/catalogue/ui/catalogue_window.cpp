#include "catalogue/ui/catalogue_window.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QUrl>
#include <algorithm>

#include "catalogue/ui/catalogue_icons.h"
#include "platform/qt/file_names.h"
#include "platform/qt/person_settings.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

constexpr const char* kGeometryKey = "Sample File Database/Geometry";
constexpr const char* kSplitterKey = "Sample File Database/Splitter";
constexpr const char* kColumnsKey = "Sample File Database/Columns";
constexpr const char* kColumnCountKey = "Sample File Database/ColumnCount";
constexpr const char* kCatalogueKey = "Sample File Database/Catalogue";

}  // namespace

CatalogueWindow::CatalogueWindow(const HostServices& services, OpenSound openSound, QWidget* parent)
    : QWidget(parent, Qt::Window),
      services_(services),
      openSound_(std::move(openSound)),
      keeper_(services.folder, services.codecs),
      preview_(prompts_, services.progress, services.devices, services.codecs) {
    setWindowTitle(tr("Sample File Database"));
    setAcceptDrops(true);
    MakeActions();
    Build();
    ConnectParts();
    const QString last = PersonSettings().value(kCatalogueKey).toString();
    const std::vector<std::string> names = keeper_.Store().Names();
    const bool there = std::find(names.begin(), names.end(), last.toStdString()) != names.end();
    list_->Refill();
    UpdateActions();
    if (!names.empty()) OpenCatalogue(there ? last : Utf8Text(names.front()));
    list_->Refill();
    RestorePlace();
}

CatalogueWindow::~CatalogueWindow() {
    StorePlace();
    preview_.SetOnStopped({});
    // The view asks for rows while the window's parts go one after another.
    table_->setModel(nullptr);
}

void CatalogueWindow::ConnectParts() {
    connect(list_, &CatalogueList::Chosen, this, &CatalogueWindow::OpenCatalogue);
    connect(list_, &CatalogueList::Closed, this, [this] { model_.Show(nullptr); });
    connect(list_, &CatalogueList::Changed, this, [this] {
        status_->ShowNote({});
        UpdateActions();
    });
    connect(list_, &CatalogueList::Failed, status_, &CatalogueStatus::ShowError);
    connect(&model_, &CatalogueTableModel::ValueEdited, &keeper_, &CatalogueKeeper::MarkChanged);
    connect(&keeper_, &CatalogueKeeper::EntryChecked, &model_, &CatalogueTableModel::EntryChanged);
    connect(&keeper_, &CatalogueKeeper::ChecksDone, this, [this] {
        if (filter_->Shown() == RowsShown::kMissing) model_.SetShown(RowsShown::kMissing);
        UpdateActions();
    });
    connect(&keeper_, &CatalogueKeeper::SaveFailed, status_, &CatalogueStatus::ShowError);
    preview_.SetOnStopped([this] { UpdateActions(); });
}

void CatalogueWindow::OpenCatalogue(const QString& name) {
    table_->clearSelection();
    model_.Show(nullptr);
    const Outcome opened = keeper_.Open(name.toStdString());
    ShowCurrent();
    status_->TellOf(name, opened);
}

void CatalogueWindow::Reload() {
    model_.Show(nullptr);
    const Outcome read = keeper_.Reload();
    ShowCurrent();
    status_->Tell(read);
}

void CatalogueWindow::ShowCurrent() {
    model_.Show(keeper_.IsOpen() ? &keeper_.Current() : nullptr);
    table_->SetColumnWidths();
    if (model_.rowCount() > 0) table_->setCurrentIndex(model_.index(0, 0));
    status_->ShowNote({});
    if (keeper_.IsOpen() && keeper_.DamagedLines() > 0)
        status_->ShowError(
            tr("Damaged lines, left out: %1. A copy of the file is kept when it changes.")
                .arg(keeper_.DamagedLines()));
    UpdateActions();
}

void CatalogueWindow::UpdateActions() {
    const std::optional<std::size_t> current = table_->CurrentEntry();
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
    if (!keeper_.IsOpen())
        return status_->ShowText(list_->IsEmpty() ? tr("No catalogue yet: drop sound files here")
                                                  : tr("No catalogue is open"));
    const Catalogue& catalogue = keeper_.Current();
    status_->ShowCounts({catalogue.Count(), static_cast<std::size_t>(model_.rowCount()),
                         catalogue.MissingCount(), table_->SelectedEntries().size()});
}

bool CatalogueWindow::EnsureCatalogue() {
    if (!keeper_.IsOpen() && list_->IsEmpty()) list_->MakeNew();
    if (keeper_.IsOpen()) return true;
    if (!list_->IsEmpty()) status_->ShowError(tr("Choose a catalogue that can be read first."));
    return false;
}

void CatalogueWindow::Present() {
    if (keeper_.IsOpen()) Reload();
    list_->Refill();
    showNormal();
    raise();
    activateWindow();
    filter_->FocusText();
}

void CatalogueWindow::RestorePlace() {
    const PersonSettings settings;
    if (!restoreGeometry(settings.value(kGeometryKey).toByteArray())) resize(1120, 640);
    splitter_->restoreState(settings.value(kSplitterKey).toByteArray());
    if (settings.value(kColumnCountKey).toInt() == model_.columnCount())
        table_->horizontalHeader()->restoreState(settings.value(kColumnsKey).toByteArray());
}

void CatalogueWindow::StorePlace() {
    PersonSettings settings;
    settings.setValue(kGeometryKey, saveGeometry());
    settings.setValue(kSplitterKey, splitter_->saveState());
    settings.setValue(kCatalogueKey, Utf8Text(keeper_.Name()));
    if (!keeper_.IsOpen()) return;
    settings.setValue(kColumnsKey, table_->horizontalHeader()->saveState());
    settings.setValue(kColumnCountKey, model_.columnCount());
}

void CatalogueWindow::closeEvent(QCloseEvent* event) {
    preview_.Stop();
    StorePlace();
    status_->Tell(keeper_.Save());
    event->accept();
}

void CatalogueWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls() && event->source() != table_) event->acceptProposedAction();
}

void CatalogueWindow::dropEvent(QDropEvent* event) {
    QStringList paths;
    for (const QUrl& url : event->mimeData()->urls())
        if (const QString file = FileTextOf(url); !file.isEmpty()) paths << file;
    event->acceptProposedAction();
    AddPaths(paths);
}

}  // namespace sonavel
