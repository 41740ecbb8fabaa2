// The sheet of a sound's properties: its file, its format, the statistics of its samples, and its
// markers.
#pragma once

#include <QPushButton>
#include <QTabWidget>
#include <memory>

#include "document/sound_doc.h"
#include "view/ui/form_dialog.h"
#include "view/ui/loudness_worker.h"

class QGridLayout;

namespace sonavel {

class CFilePropertiesSheet : public FormDialog {
    Q_OBJECT

  public:
    // The document must outlive the sheet.
    CFilePropertiesSheet(const CSoundDoc& document, ProgressFactory& progress,
                         QWidget* parent = nullptr);

    // Shown when the page comes up for the first time, with a progress for a long sound; the
    // loudness comes when it is measured, beside whatever the person does.
    void ShowStatistics();

  private:
    QWidget* MakeStatistics();
    QWidget* MakeLoudness();
    QWidget* MakeMarkers();
    void MeasureLoudnessAside();
    void ShowLoudness(const Result<SoundLoudness>& found);

    const CSoundDoc& document_;
    ProgressFactory& progress_;
    QTabWidget* tabs_;
    QWidget* statisticsPage_ = nullptr;
    QWidget* statistics_ = nullptr;
    QLabel* note_ = nullptr;
    QPushButton* again_ = nullptr;
    bool measuring_ = false;
    QLabel* integrated_ = nullptr;
    QLabel* range_ = nullptr;
    QLabel* truePeak_ = nullptr;
    std::unique_ptr<LoudnessWorker> worker_;
};

}  // namespace sonavel
