// The look that the effect dialogs share: their colours, the header line, and how values,
// sliders and bars are drawn in them.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QPalette>
#include <QScrollBar>
#include <QSlider>
#include <QStringList>

namespace sonavel {

inline constexpr QRgb kEffectBackground = qRgb(0xC8, 0xD7, 0xD7);
inline constexpr QRgb kEffectHeader = qRgb(0x14, 0xD7, 0xD7);
inline constexpr QRgb kEffectHeaderText = qRgb(0x00, 0x36, 0x36);

// Of the dialog and its ordinary labels; the background is light, so the texts are dark whatever
// the desktop's own palette is.
QPalette EffectPalette();
// Of what keeps the program's own colours inside such a dialog.
QPalette ProgramPalette();

// A value beside its control, wide enough for the widest of its texts.
class ValueLabel : public QLabel {
  public:
    explicit ValueLabel(QWidget* parent = nullptr);
    void ReserveFor(const QStringList& texts);
};

// The bold line on top, which is also the status line, with notes on what the buttons will do.
class EffectHeader : public QFrame {
  public:
    explicit EffectHeader(QWidget* parent);

    void SetStatus(const QString& text) { status_->setText(text); }
    QString Status() const { return status_->text(); }
    void SetNotes(const QStringList& notes);
    QString Notes() const { return notes_->text(); }

  private:
    QLabel* status_;
    QLabel* notes_;
};

// A scroll bar that can be reached with Tab.
class FocusScrollBar : public QScrollBar {
  public:
    explicit FocusScrollBar(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

// A slider that is filled from the bottom or the left, also where its positions count down.
class EffectSlider : public QSlider {
  public:
    EffectSlider(Qt::Orientation orientation, QWidget* parent);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void initStyleOption(QStyleOptionSlider* option) const override;

  private:
    bool painting_ = false;
};

}  // namespace sonavel
