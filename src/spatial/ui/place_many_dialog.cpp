#include "spatial/ui/place_many_dialog.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>

#include "platform/small_file.h"

namespace sonavel {
namespace {

constexpr std::size_t kMostTextBytes = 1 << 20;
constexpr int kShownLines = 8;
constexpr int kFolderCharacters = 40;

}  // namespace

ManyPlacesChoice FourDirections(const std::filesystem::path& folder) {
    return {.folder = folder, .points = "0,1,0\n1,0,0\n0,-1,0\n-1,0,0\n"};
}

PlaceManyDialog::PlaceManyDialog(const ManyPlacesChoice& first, QWidget* parent)
    : FormDialog(tr("Place Many"), parent),
      sounds_(new QComboBox(this)),
      soundsFolder_(new QLineEdit(QString::fromStdString(first.soundsFolder.string()), this)),
      soundsRow_(new QWidget(this)),
      points_(new QPlainTextEdit(QString::fromStdString(first.points), this)),
      state_(new QLabel(this)),
      folder_(new QLineEdit(QString::fromStdString(first.folder.string()), this)),
      pattern_(new QLineEdit(QString::fromStdString(first.pattern), this)),
      smooth_(new QCheckBox(tr("&Smooth"), this)),
      replace_(new QCheckBox(tr("&Replace files that are there already"), this)) {
    smooth_->setChecked(first.smoothness == Smoothness::kSmooth);
    AddSounds();
    AddPoints();
    AddFiles();
    sounds_->setCurrentIndex(static_cast<int>(first.sounds));
    ShowSoundsFolder();
    Body().addWidget(smooth_);
    Body().addWidget(replace_);
    connect(points_, &QPlainTextEdit::textChanged, this, &PlaceManyDialog::CheckPoints);
    CheckPoints();
}

void PlaceManyDialog::AddSounds() {
    sounds_->addItems({tr("The active one"), tr("All open ones"), tr("Those of a folder")});
    auto* browse = new QPushButton(tr("Bro&wse…"), this);
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, [this] { BrowseFolder(*soundsFolder_); });
    auto* row = new QHBoxLayout(soundsRow_);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(soundsFolder_, 1);
    row->addWidget(browse);
    soundsFolder_->setAccessibleName(tr("Folder of the sounds"));
    QFormLayout& form = AddForm();
    form.addRow(tr("So&unds :"), sounds_);
    form.addRow(QString(), soundsRow_);
    connect(sounds_, &QComboBox::currentIndexChanged, this, &PlaceManyDialog::ShowSoundsFolder);
    connect(soundsFolder_, &QLineEdit::textChanged, this, &PlaceManyDialog::CheckPoints);
}

void PlaceManyDialog::ShowSoundsFolder() {
    const bool ofFolder = sounds_->currentIndex() == static_cast<int>(PlacedSounds::kFolder);
    soundsRow_->setEnabled(ofFolder);
    CheckPoints();
}

void PlaceManyDialog::AddPoints() {
    auto* title =
        new QLabel(tr("&Points, one a line: x,y,z or name,x,y,z; further x,y,z make a path"), this);
    title->setBuddy(points_);
    points_->setTabChangesFocus(true);
    points_->setMinimumHeight(kShownLines * points_->fontMetrics().lineSpacing());
    auto* row = new QHBoxLayout;
    auto* load = new QPushButton(tr("&Load…"), this);
    load->setAutoDefault(false);
    row->addWidget(state_, 1);
    row->addWidget(load);
    connect(load, &QPushButton::clicked, this, &PlaceManyDialog::LoadPoints);
    Body().addWidget(title);
    Body().addWidget(points_);
    Body().addLayout(row);
}

void PlaceManyDialog::AddFiles() {
    auto* browse = new QPushButton(tr("&Browse…"), this);
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, [this] { BrowseFolder(*folder_); });
    auto* row = new QHBoxLayout;
    row->addWidget(folder_, 1);
    row->addWidget(browse);
    QFormLayout& form = AddForm();
    auto* label = new QLabel(tr("&Folder :"), this);
    label->setBuddy(folder_);
    folder_->setMinimumWidth(kFolderCharacters * fontMetrics().averageCharWidth());
    form.addRow(label, row);
    form.addRow(tr("File &names :"), pattern_);
    pattern_->setToolTip(
        tr("{name}, {number}, {azimuth}, {elevation} and {distance} stand for those of a point"));
}

void PlaceManyDialog::LoadPoints() {
    const QString path = QFileDialog::getOpenFileName(this, tr("Points"), folder_->text(),
                                                      tr("Tables (*.csv);;All files (*)"));
    if (path.isEmpty()) return;
    if (const auto text = ReadSmallFile(path.toStdString(), kMostTextBytes))
        points_->setPlainText(QString::fromStdString(*text));
    else
        QMessageBox::warning(this, windowTitle(), tr("The file cannot be read."));
}

void PlaceManyDialog::BrowseFolder(QLineEdit& into) {
    const QString path = QFileDialog::getExistingDirectory(this, tr("Folder"), into.text());
    if (!path.isEmpty()) into.setText(path);
}

void PlaceManyDialog::CheckPoints() {
    const auto points = ParsePoints(points_->toPlainText().toStdString());
    state_->setText(points
                        ? tr("%n file(s) of each sound", nullptr, static_cast<int>(points->size()))
                        : QString::fromStdString(points.Reason()));
    const bool lacksFolder = soundsRow_->isEnabled() && soundsFolder_->text().isEmpty();
    SetOkEnabled(points && !lacksFolder);
}

ManyPlacesChoice PlaceManyDialog::Choice() const {
    return {.folder = folder_->text().toStdString(),
            .points = points_->toPlainText().toStdString(),
            .pattern = pattern_->text().toStdString(),
            .smoothness = smooth_->isChecked() ? Smoothness::kSmooth : Smoothness::kStepped,
            .filesThere = replace_->isChecked() ? FilesThere::kReplace : FilesThere::kKeep,
            .sounds = static_cast<PlacedSounds>(sounds_->currentIndex()),
            .soundsFolder = soundsFolder_->text().toStdString()};
}

}  // namespace sonavel
