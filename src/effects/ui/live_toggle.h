// The button "Live", which plays the range over and over as it is set now, with what belongs to
// it: the comparison with the untouched sound, the levels of both ears, and a note.
#pragma once

#include <QCheckBox>
#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <memory>

#include "audio/live_player.h"
#include "effects/ui/level_bars.h"
#include "view/sound_view.h"

namespace sonavel {

// `note`: in what Live differs from the result; may be empty.
struct LiveTexts {
    QString note;
    QString live = LiveTexts::tr("Live");
    QString bypass = LiveTexts::tr("Bypass");

    Q_DECLARE_TR_FUNCTIONS(sonavel::LiveTexts)
};

class LiveToggle : public QObject {
    Q_OBJECT

  public:
    // Makes what is heard; null when that cannot be.
    using Make = std::function<std::unique_ptr<LiveMaker>()>;

    // Ctrl+L starts and stops it, B compares.
    LiveToggle(CSoundView& view, Make make, const LiveTexts& texts, QWidget* dialog);
    ~LiveToggle() override;

    QPushButton* Button() { return button_; }
    // Bypass, levels and note in a line of their own.
    QWidget* Line() { return line_; }

    // Why this cannot be heard live.
    void Refuse(const QString& reason);
    void Toggle();
    void Stop();
    bool IsPlaying() const { return player_ != nullptr; }
    // Something has been set on the maker.
    void MakeAnew();
    void ToggleBypass();
    bool IsBypassed() const { return bypass_->isChecked(); }
    // How much of the range lies before what is heard, 0 to 1.
    double HeardShare() const;

  Q_SIGNALS:
    void Starting();
    // Now and then while it plays.
    void Heard(double share);
    void Silent();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Start();
    void MakeLine(const LiveTexts& texts);
    void ShowPlaying(bool plays);
    void Follow();
    void ShowPeaks(const LivePeaks& peaks);
    void NoteLoss();

    CSoundView& view_;
    Make make_;
    QWidget* dialog_;
    QPushButton* button_;
    QWidget* line_;
    QCheckBox* bypass_;
    LevelBars* levels_;
    QLabel* note_;
    QTimer following_;
    LiveRange range_{};
    std::unique_ptr<LivePlayer> player_;
};

}  // namespace sonavel
