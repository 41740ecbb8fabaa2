// The logo: a window without borders that shows eleven pictures one after the other. At start-up it
// stands over the main frame for a while; the About box runs it on demand.
#pragma once

#include <QDialog>
#include <QPixmap>
#include <QTimer>
#include <vector>

#include "app/logo_picture.h"

namespace sonavel {

class LogoWindow : public QDialog {
    Q_OBJECT

  public:
    static constexpr int kPictureMs = 200;
    static constexpr int kStartUpMs = 3000;  // how long the start-up logo stays

    explicit LogoWindow(QWidget* parent = nullptr);

    // In the middle of a frame, above all that is in it, where the desktop would let a window of
    // its own lie behind the frame. Takes no keyboard.
    void ShowWithin(QWidget& frame);

    // The index of the picture shown.
    int Picture() const { return picture_; }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    // Ends the dialog when it runs modally, else hides it: the start-up logo is taken away by its
    // owner's timer.
    void mousePressEvent(QMouseEvent* event) override;

  private:
    void StandInTheMiddle();  // of the frame
    void ShowNext();

    std::vector<QPixmap> pictures_;
    int picture_ = 0;
    QTimer timer_;
};

}  // namespace sonavel
