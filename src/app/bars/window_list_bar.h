// The window list bar: a button for each open sound, in an order that the person may change.
#pragma once

#include <QTabBar>
#include <QToolBar>

#include "app/child_frame.h"

namespace sonavel {

// Buttons in a row that can be dragged along it. A button has room for a name of usual length and,
// where many share the row, still for its ends.
class WindowButtons : public QTabBar {
    Q_OBJECT

  public:
    explicit WindowButtons(QWidget* parent = nullptr);
    // Of the row, in pixels: one line of text, and what is round it.
    int Thickness() const;

  Q_SIGNALS:
    // With the left button, the pressed button included, and the middle button.
    void LeftPressed(int index);
    void MiddleClicked(int index);

  protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    QSize WithLength(QSize size, int least, int most) const;

    int middlePressed_ = -1;
};

class WindowListBar : public QToolBar {
    Q_OBJECT

  public:
    explicit WindowListBar(const QString& name, QWidget* parent = nullptr);

    // At the end of the row.
    void Add(CChildFrame& frame);
    void Remove(const CChildFrame& frame);
    // Takes over the titles, with a star for a modified sound, and presses the active one's button.
    void Refresh(const CChildFrame* active);
    QTabBar& Buttons() { return *buttons_; }

  Q_SIGNALS:
    // The middle button closes the window, which asks whether to save.
    void Chosen(CChildFrame* frame);
    void MenuRequested(CChildFrame* frame, const QPoint& globalPosition);

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    CChildFrame* FrameAt(int index) const;  // null beside the buttons
    int IndexOf(const CChildFrame* frame) const;
    void ShowFrame(int index);
    void Turn(Qt::Orientation orientation);
    // A floating bar does not follow the size of its contents by itself.
    void FitFloating();

    WindowButtons* buttons_;
};

}  // namespace sonavel
