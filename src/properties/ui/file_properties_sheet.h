// The sheet of a sound's properties: its file, its format, the statistics of its samples, and its
// markers.
#pragma once

#include <QPushButton>
#include <QTabWidget>

#include "document/sound_doc.h"
#include "view/ui/form_dialog.h"

class QGridLayout;

namespace sonavel {

class CFilePropertiesSheet : public FormDialog {
    Q_OBJECT

  public:
    // The document must outlive the sheet.
    CFilePropertiesSheet(const CSoundDoc& document, ProgressFactory& progress,
                         QWidget* parent = nullptr);

    // Shown when the page comes up for the first time, with a progress for a long sound.
    void ShowStatistics();

  private:
    QWidget* MakeStatistics();
    QWidget* MakeMarkers();

    const CSoundDoc& document_;
    ProgressFactory& progress_;
    QTabWidget* tabs_;
    QWidget* statisticsPage_ = nullptr;
    QWidget* statistics_ = nullptr;
    QLabel* note_ = nullptr;
    QPushButton* again_ = nullptr;
    bool measuring_ = false;
};

}  // namespace sonavel
