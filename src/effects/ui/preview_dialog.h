// What every dialog that previews has in common, of an effect or of a place in space: the look, the
// header line with its notes, Preview and Stop with their progress, Live, OK and Cancel, and that
// it stays open while it computes.
#pragma once

#include <QBoxLayout>
#include <QDialog>
#include <QPushButton>
#include <memory>

#include "effects/ui/effect_look.h"
#include "effects/ui/live_toggle.h"
#include "effects/ui/preview_toggle.h"
#include "view/sound_view.h"

namespace sonavel {

class PreviewDialog : public QDialog {
    Q_OBJECT

  public:
    ~PreviewDialog() override;

    // Does to the document what is set; to be called after the dialog has ended with OK.
    Outcome Apply();

    // As the button Live does, where it can.
    void BeginLive();

    // Ends the preview and Live, whichever way the dialog ends.
    void done(int result) override;

  protected:
    enum class Purpose { kApply, kPlayedPreview };

    // `titlePrefix` is that of a new document made from the preview.
    PreviewDialog(CSoundView& view, const QString& title, std::string_view titlePrefix,
                  QWidget* parent);

    // Computes what is set.
    virtual Outcome Run(Purpose purpose) = 0;
    // The preview has fallen silent.
    virtual void OnSilent() {}
    // What is heard live, with what is set now; null when there is nothing to hear.
    virtual std::unique_ptr<LiveMaker> MakeLive() = 0;

    CSoundView& View() const { return view_; }
    CSoundDoc& Document() const { return view_.Document(); }
    EffectHeader& Header() { return *header_; }
    QVBoxLayout& Outer() { return *outer_; }  // the header, and below it what a dialog adds
    bool IsRunning() const { return running_; }

    // The header line says the instruction whenever a preview has fallen silent.
    PreviewToggle& MakePreview(const QString& instruction);
    PreviewToggle* Preview() const { return preview_.get(); }  // null without a preview
    LiveToggle& MakeLiveToggle(const LiveTexts& texts);
    // What is said beside what is heard live, across the dialog; after MakeLiveToggle().
    void AddLiveLine();
    LiveToggle* Live() const { return live_.get(); }  // null once the dialog has ended
    // A button that Enter does not press.
    QPushButton* AddButton(QHBoxLayout& row, const QString& text);
    // Returns OK, which Enter presses.
    QPushButton* AddOkAndCancel(QHBoxLayout& row);

    // Tab follows the layouts, however the dialog was put together.
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    Outcome RunWhileOpen(Purpose purpose);
    Outcome RunPreview();

    CSoundView& view_;
    std::string_view titlePrefix_;
    EffectHeader* header_;
    QVBoxLayout* outer_;
    std::unique_ptr<PreviewToggle> preview_;
    std::unique_ptr<LiveToggle> live_;
    bool running_ = false;
};

}  // namespace sonavel
