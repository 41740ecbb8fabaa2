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

    // The index of the picture shown.
    int Picture() const { return picture_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    // Ends the dialog when it runs modally, else hides it: the start-up logo is taken away by its
    // owner's timer.
    void mousePressEvent(QMouseEvent* event) override;

  private:
    void ShowNext();

    std::vector<QPixmap> pictures_;
    int picture_ = 0;
    QTimer timer_;
};

}  // namespace sonavel
