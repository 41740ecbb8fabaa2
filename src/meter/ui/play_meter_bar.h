// The play meter bar: the meters of both channels in a dock of the main frame, lying or standing as
// its shape has it, with read-outs beside them where they fit.
#pragma once

#include <QDockWidget>

#include "audio/player_observer.h"
#include "meter/ui/play_meter.h"
#include "platform/command_table.h"
#include "view/draw/colour_table.h"
#include "view/ui/command_menu.h"

namespace sonavel {

namespace meter_command {
enum Id : int {
    kSixtyDb = 32851,
    kNinetyDb = 32853,
    kAbsolute = 32854,
    kShowLevel = 32855,
    kThirtyDb = 32856,
};
}  // namespace meter_command

// The bar's contents, without the dock's own frame.
class MeterPanel : public QWidget {
    Q_OBJECT

  public:
    explicit MeterPanel(QWidget* parent = nullptr);

    PlayMeter& Left() { return *left_; }
    PlayMeter& Right() { return *right_; }
    void SetLevels(std::int32_t left, std::int32_t right, std::int32_t reference);
    void SetReadOuts(MeterReadOuts readOuts);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void LayOut();
    QString ReadOut(const PlayMeter& meter) const;

    PlayMeter* left_;
    PlayMeter* right_;
    MeterReadOuts readOuts_ = MeterReadOuts::kHidden;
    MeterBarPlaces places_;
    QFont readOutFont_;
};

class PlayMeterBar : public QDockWidget, public PeakObserver {
    Q_OBJECT

  public:
    // The settings file is read now and written when the scale or the labels change.
    explicit PlayMeterBar(const ProfileFile& options, QWidget* parent = nullptr);

    // Sample values of the two channels, as the player reports its peaks.
    void OnPeaks(std::int32_t left, std::int32_t right) override;
    // Twice the value of a full bar: the largest sample value + 1, 256 or 65536.
    void SetReference(std::int32_t fullScale);
    // Background, ticks and labels take the colours of the view's background, grid and waveform.
    void SetColours(const ColourTable& colours);
    // Reads the settings anew where the file has others than the bar.
    void ReloadSettings();

    MeterScale Scale() const { return scale_; }
    bool ShowsLabels() const { return showLabels_ != 0; }
    // Each writes its key. False when that cannot be written; it holds all the same.
    bool SetScale(MeterScale scale);
    bool SwitchLabels();

    // The bar as menus see it; the rows are those of MeterCommands().
    CommandTarget& Commands() { return commands_; }

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void ShowTitle(Qt::DockWidgetArea area);
    void ShowScale(MeterScale scale);
    void ShowLabels(int showLabels);

    ProfileFile options_;
    MeterPanel* panel_;
    MeterScale scale_ = MeterScale::kSixtyDb;
    int showLabels_ = 0;
    std::int32_t left_ = 0;
    std::int32_t right_ = 0;
    std::int32_t reference_ = 32768;
    TableCommandTarget<PlayMeterBar> commands_;
    CommandActions actions_;
};

std::span<const Command<PlayMeterBar>> MeterCommands();

}  // namespace sonavel
