// The button "Preview", which becomes "Stop" while the preview is heard, with the bar and the
// percentage that follow it.
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <functional>

#include "document/sound_doc.h"

namespace sonavel {

class PreviewToggle : public QObject, private PlayPositionObserver {
    Q_OBJECT

  public:
    // Renders the preview and starts it.
    using Render = std::function<Outcome()>;

    // Takes the play positions of the document's two sounds until it is destroyed.
    PreviewToggle(CSoundDoc& document, Render render, QWidget* dialog);
    ~PreviewToggle() override;

    QPushButton* Button() { return button_; }
    // All that the button ever shows.
    static QStringList ButtonTexts();
    QProgressBar* Bar() { return bar_; }
    QLabel* Percent() { return percent_; }

    void Toggle();
    void Stop();

  Q_SIGNALS:
    void Rendering();
    // This much of the preview has been heard, 0 to 1.
    void Heard(double share);
    // The preview is not heard, or no longer; the reason when it could not be made, else empty.
    void Silent(const QString& reason);

  private:
    void OnPlayPosition(std::uint64_t positionBytes, std::uint64_t totalBytes) override;
    void ShowBar(int percent);
    void ShowSilent(const QString& reason = {});

    CSoundDoc& document_;
    Render render_;
    QPushButton* button_;
    QProgressBar* bar_;
    QLabel* percent_;
};

}  // namespace sonavel
