// The status bar: the prompt of the command under the pointer, what the sound does, and the time
// zoom.
#pragma once

#include <QLabel>
#include <QStatusBar>
#include <vector>

namespace sonavel {

class StatusPanes : public QStatusBar {
    Q_OBJECT

  public:
    explicit StatusPanes(QWidget* parent = nullptr);

    // A prompt goes when the pointer leaves the command; empty shows the note, or "Ready".
    void ShowPrompt(const QString& text);
    // A note stays for some seconds, over any prompt.
    void ShowNote(const QString& text);
    void ShowState(const QString& text);
    void ShowSelection(const QString& text);
    void ShowZoom(const QString& text);

    QString Shown() const { return prompt_->text(); }

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    struct Pane {
        QLabel* label;
        int fullWidth;
    };

    QLabel* AddPane(const QString& name, const QString& widestText);
    void Update();

    QLabel* prompt_;
    std::vector<Pane> panes_;
    QLabel* state_;
    QLabel* selection_;
    QLabel* zoom_;
    QString note_;
    QString hovered_;
    int noteNumber_ = 0;
};

}  // namespace sonavel
