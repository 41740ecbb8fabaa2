// A framed text of the status bar. Of one that is too long for its room the end, or the beginning,
// is replaced by dots, and the tool tip has the whole; screen readers always have it.
#pragma once

#include <QLabel>

namespace sonavel {

class StatusPane : public QLabel {
  public:
    // The widest text that is usually shown decides how wide the pane wants to be.
    StatusPane(const QString& name, const QString& widestText, QWidget* parent);

    // For all of any text, frame included, in pixels; 0 for none.
    int WidthFor(const QString& text) const;
    int UsualWidth() const { return WidthFor(widestText_); }

    void SetShown(const QString& text, Qt::TextElideMode cut);
    // 0 leaves the pane out.
    void SetRoom(int width);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QString Cut() const;
    void FollowRoom();

    QString widestText_;
    Qt::TextElideMode cut_ = Qt::ElideRight;
};

}  // namespace sonavel
