#include "app/preferences/option_sheet.h"

#include <QPushButton>
#include <algorithm>
#include <utility>

#include "app/preferences/option_3d.h"
#include "app/preferences/option_display.h"
#include "app/preferences/option_general.h"
#include "app/preferences/option_grid.h"
#include "app/preferences/option_keys.h"
#include "app/preferences/option_spectrogram.h"
#include "app/preferences/option_wave.h"

namespace sonavel {

COptionSheet::COptionSheet(const ProgramFolder& folder, WaveDevices& devices, QWidget* parent,
                           const StorageFacts& facts, std::vector<KeyRow> commands)
    : FormDialog(tr("Preference Setting"), parent,
                 QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply),
      folder_(folder),
      tabs_(new QTabWidget(this)),
      problem_(new FieldHint({}, this)),
      stored_(Preferences::Read(folder)) {
    AddPage(new COptionDisplay(folder.Display(), tabs_), tr("Display"));
    AddPage(new COptionGeneral(facts, tabs_), tr("General"));
    AddPage(new COptionGrid(tabs_), tr("Grid"));
    AddPage(new COptionWave(devices, tabs_), tr("Wave"));
    AddPage(new COption3D(tabs_), tr("3D"));
    AddPage(new COptionKeys(std::move(commands), tabs_), tr("Keys"));
    AddPage(new COptionSpectrogram(tabs_), tr("Spectrogram"));
    Body().addWidget(tabs_);
    Body().addWidget(problem_);
    problem_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);  // no room while hidden
    for (OptionPage* page : pages_) page->ShowPreferences(stored_);
    for (OptionPage* page : pages_)
        connect(page, &OptionPage::Edited, this, [this] { TakeEdit(); });
    connect(Buttons().button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            [this] { Apply(); });
    TakeEdit();
    tabs_->setFocus();
}

void COptionSheet::AddPage(OptionPage* page, const QString& title) {
    tabs_->addTab(page, title);
    pages_.push_back(page);
}

Preferences COptionSheet::Edited() const {
    Preferences edited = stored_;
    for (const OptionPage* page : pages_) page->TakeInto(edited);
    return edited;
}

void COptionSheet::TakeEdit() {
    const Preferences edited = Edited();
    const bool valid = std::ranges::all_of(pages_, &OptionPage::IsValid);
    SetOkEnabled(valid);
    Buttons().button(QDialogButtonBox::Apply)->setEnabled(valid && edited != stored_);
    for (OptionPage* page : pages_) page->ShowPreview(edited);
}

bool COptionSheet::Apply() {
    const Preferences edited = Edited();
    if (edited == stored_) return true;
    const bool written = WriteChanges(folder_, stored_, edited);
    problem_->setText(written ? QString()
                              : tr("The settings cannot be written to %1")
                                    .arg(QString::fromStdString(folder_.Path().string())));
    problem_->setVisible(!written);
    stored_ = Preferences::Read(folder_);
    TakeEdit();
    Q_EMIT Changed();
    return written;
}

void COptionSheet::accept() {
    if (Apply()) FormDialog::accept();
}

}  // namespace sonavel
