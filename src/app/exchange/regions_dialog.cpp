#include "app/exchange/regions_dialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPushButton>
#include <algorithm>

#include "app/exchange/export_dialog.h"
#include "platform/code_page_949.h"
#include "platform/qt/file_names.h"
#include "platform/qt/message_box.h"
#include "platform/qt/tab_order.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

constexpr int kNamesHeight = 160;

enum Split { kRegions, kBetweenMarkers };

bool HasRegion(const MarkerList& markers) {
    return std::ranges::any_of(markers.All(), [](const Marker& marker) { return marker.length; });
}

}  // namespace

RegionsDialog::RegionsDialog(const CSoundDoc& document, SoundFileKind kind, QWidget* parent)
    : FormDialog(tr("Export Regions"), parent),
      document_(document),
      split_(new QComboBox(this)),
      folder_(new QLineEdit(this)),
      pattern_(new QLineEdit(QStringLiteral("{number}_{name}"), this)),
      kind_(new QComboBox(this)),
      quality_(new QSpinBox(this)),
      names_(new QListWidget(this)),
      notice_(new QLabel(this)) {
    SetSizing(Sizing::kFree);
    AddFields(kind);
    folder_->setText(FileText(FolderOfSound()));
    Buttons().button(QDialogButtonBox::Ok)->setText(tr("&Export"));
    for (QLineEdit* edit : {folder_, pattern_})
        connect(edit, &QLineEdit::textChanged, this, &RegionsDialog::ShowNames);
    for (QComboBox* box : {split_, kind_})
        connect(box, &QComboBox::currentIndexChanged, this, &RegionsDialog::ShowNames);
    TabAsLaidOut(*this);
    ShowNames();
}

void RegionsDialog::AddFields(SoundFileKind kind) {
    QFormLayout& form = AddForm();
    split_->addItems({tr("Every region"), tr("Every stretch between markers")});
    if (!HasRegion(document_.Sound().Markers())) split_->setCurrentIndex(kBetweenMarkers);
    const SoundFileKind first = kind;
    for (const ExportKind& row : ExportKinds())
        kind_->addItem(QString::fromUtf8(row.extension).mid(1).toUpper(),
                       static_cast<int>(row.kind));
    kind_->setCurrentIndex(std::max(kind_->findData(static_cast<int>(first)), 0));
    quality_->setRange(0, static_cast<int>(kBestQuality));
    quality_->setValue(static_cast<int>(ExportChoice().quality));
    pattern_->setToolTip(tr("{number}, {name} of the region and {title} of the sound"));
    auto* browse = new QPushButton(tr("&Browse..."), this);
    auto* where = new QHBoxLayout;
    where->addWidget(folder_, 1);
    where->addWidget(browse);
    connect(browse, &QPushButton::clicked, this, &RegionsDialog::ChooseFolder);
    form.addRow(tr("E&xport:"), split_);
    form.addRow(tr("&Format:"), kind_);
    form.addRow(tr("&Quality of lossy formats:"), quality_);
    auto* folderLabel = new QLabel(tr("F&older:"), this);
    folderLabel->setBuddy(folder_);
    form.addRow(folderLabel, where);
    form.addRow(tr("File &names:"), pattern_);
    form.addRow(tr("Preview:"), names_);
    // The label of a row of two controls names neither.
    folder_->setAccessibleName(tr("Folder"));
    names_->setAccessibleName(tr("Files"));
    names_->setFocusPolicy(Qt::NoFocus);
    names_->setMinimumHeight(kNamesHeight);
    notice_->setWordWrap(true);
    Body().addWidget(notice_);
}

std::filesystem::path RegionsDialog::FolderOfSound() const {
    std::error_code error;
    return document_.Path().empty() ? std::filesystem::current_path(error)
                                    : document_.Path().parent_path();
}

std::string RegionsDialog::Title() const {
    return std::filesystem::path(DisplayText(document_.Title())).stem().string();
}

Result<RegionExport> RegionsDialog::Regions() const {
    const CWave& sound = document_.Sound();
    RegionExport regions;
    regions.folder = FolderOfSound() / FilePath(folder_->text());
    regions.existing = existing_;
    regions.choice.kind = static_cast<SoundFileKind>(kind_->currentData().toInt());
    regions.choice.depth = ExportDepth(regions.choice.kind, sound, document_.Origin());
    regions.choice.quality = static_cast<std::uint32_t>(quality_->value());
    regions.parts = PartsOf(
        sound, split_->currentIndex() == kBetweenMarkers ? SplitAt::kMarkers : SplitAt::kRegions,
        {0, sound.GetFrameCount()}, Title());
    if (regions.parts.empty()) return Failed("There are no regions to export.");
    Result<std::vector<std::string>> names =
        PartFileNames(pattern_->text().toStdString(), regions.parts, Title());
    if (!names) return names.Ended();
    regions.names = *std::move(names);
    return regions;
}

void RegionsDialog::ShowNames() {
    const Result<RegionExport> regions = Regions();
    names_->clear();
    for (std::size_t part = 0; regions && part < regions->names.size(); ++part)
        names_->addItem(ShownFileText(FileText(PathOfPart(*regions, part).filename())));
    std::error_code error;
    const bool isThere = regions && std::filesystem::exists(regions->folder, error);
    QString problem = Utf8Text(regions.Reason());
    if (regions && folder_->text().isEmpty())
        problem = tr("A folder is missing.");
    else if (isThere && !std::filesystem::is_directory(regions->folder, error))
        problem = tr("This is no folder.");
    SetOkEnabled(problem.isEmpty());
    notice_->setText(problem.isEmpty() && !isThere ? tr("The folder will be made.") : problem);
}

void RegionsDialog::ChooseFolder() {
    QFileDialog dialog(this, windowTitle(), folder_->text());
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::Directory);
    if (dialog.exec() == QDialog::Accepted) folder_->setText(dialog.selectedFiles().value(0));
}

void RegionsDialog::accept() {
    const Result<RegionExport> regions = Regions();
    if (!regions) return;
    const auto existing = ExistingParts(*regions);
    if (!existing.empty()) {
        const QString first = ShownFileText(FileText(existing.front().filename()));
        const QString text = existing.size() == 1
                                 ? tr("%1 exists already. Replace it?").arg(first)
                                 : tr("%1 and %2 more exist already. Replace them?")
                                       .arg(first)
                                       .arg(existing.size() - 1);
        MessageBox box({.text = text, .buttons = QMessageBox::Yes | QMessageBox::No}, this);
        if (box.exec() != QMessageBox::Yes) return;
        existing_ = ExistingFiles::kReplace;
    }
    FormDialog::accept();
}

}  // namespace sonavel
