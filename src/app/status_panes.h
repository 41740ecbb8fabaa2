// The status bar: the prompt of the command under the pointer, what the sound does, and the time
// zoom.
#pragma once

#include <QLabel>
#include <QStatusBar>

#include "app/status_pane.h"

namespace sonavel {

class StatusPanes : public QStatusBar {
    Q_OBJECT

  public:
    explicit StatusPanes(QWidget* parent = nullptr);

    // A prompt goes when the pointer leaves the command; empty shows the note, or "Ready".
    void ShowPrompt(const QString& text);
    // A note stays for some seconds, over any prompt.
    void ShowNote(const QString& text);
    // A text that grows while it is shown takes the room that it needs from the prompt.
    enum class StateWidth { kUsual, kOfItsText };
    void ShowState(const QString& text, StateWidth width);
    void ShowSelection(const QString& text);
    void ShowZoom(const QString& text);

    QString Shown() const { return prompt_->text(); }

    // The panes follow the window's width, and do not bound it.
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    // Into the field that a double click on the pane of the selection opens.
    void PlaceTyped(const QString& text);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    StatusPane* AddPane(const QString& name, const QString& widestText);
    void Show(StatusPane& pane, const QString& text, Qt::TextElideMode cut);
    void LayOutPanes();
    void Update();
    void TypePlace();

    StatusPane* prompt_;
    StatusPane* state_;
    StatusPane* selection_;
    StatusPane* zoom_;
    int grownWidth_ = 0;  // of the state pane, while its text needs more than usual
    QString note_;
    QString hovered_;
    int noteNumber_ = 0;
};

}  // namespace sonavel
