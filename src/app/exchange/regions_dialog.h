// The dialog "Export Regions": which parts of the sound, in which kind of file, where to, and what
// the files will be called.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>
#include <string>

#include "document/sound_doc.h"
#include "exchange/region_export.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class RegionsDialog : public FormDialog {
    Q_OBJECT

  public:
    RegionsDialog(const CSoundDoc& document, SoundFileKind kind, QWidget* parent = nullptr);
    // Fails where the pattern or the sound gives no files.
    Result<RegionExport> Regions() const;

    // Asks before files are replaced.
    void accept() override;

  private:
    void AddFields(SoundFileKind kind);
    void ChooseFolder();
    void ShowNames();
    // From which a folder that is typed without its beginning counts.
    std::filesystem::path FolderOfSound() const;
    std::string Title() const;

    const CSoundDoc& document_;
    ExistingFiles existing_ = ExistingFiles::kRefuse;
    QComboBox* split_;
    QLineEdit* folder_;
    QLineEdit* pattern_;
    QComboBox* kind_;
    QSpinBox* quality_;
    QListWidget* names_;
    QLabel* notice_;
};

}  // namespace sonavel
