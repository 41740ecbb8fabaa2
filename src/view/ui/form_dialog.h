// What the view's dialogs are made of: a dialog with a body above its OK and Cancel buttons, a hint
// beside a field, a slider with its number, and a place in the sound in frames and in seconds.
#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>
#include <cstdint>

namespace sonavel {

class FormDialog : public QDialog {
    Q_OBJECT

  public:
    FormDialog(const QString& title, QWidget* parent,
               QDialogButtonBox::StandardButtons buttons = QDialogButtonBox::Ok |
                                                           QDialogButtonBox::Cancel);

  protected:
    enum class Sizing { kFixed, kFree };

    QVBoxLayout& Body() { return *body_; }
    QDialogButtonBox& Buttons() { return *buttons_; }
    // A new form with the dialogs' common alignment, in a group of that title or, with an empty
    // title, directly in the body.
    QFormLayout& AddForm(const QString& groupTitle = {});
    void SetOkEnabled(bool enabled);
    void SetSizing(Sizing sizing);
    // The buttons come last for the Tab key, and a dialog that has not chosen otherwise begins in
    // its first field.
    void showEvent(QShowEvent* event) override;

  private:
    void PutButtonsLast();
    // Null when there is nothing but buttons.
    QWidget* FirstField() const;

    QVBoxLayout* body_;
    QDialogButtonBox* buttons_;
};

// A short reason beside a field, in the colour of a warning; it takes its place while hidden, so
// that nothing moves when it appears.
class FieldHint : public QLabel {
    Q_OBJECT

  public:
    explicit FieldHint(const QString& text, QWidget* parent = nullptr);
    void SetShown(bool shown);
};

// A slider with the same number in a box beside it, in percent.
class PercentSlider : public QWidget {
    Q_OBJECT

  public:
    PercentSlider(int highest, int value, QWidget* parent = nullptr);
    int Value() const { return number_->value(); }
    void SetValue(int value) { number_->setValue(value); }
    // For screen readers, as a label beside it names neither of its two parts.
    void SetSpokenName(const QString& name);

  private:
    QSlider* slider_;
    QSpinBox* number_;
};

// Seconds with three decimals, which takes times in every way in which a person types them; a
// relative one counts from `here`, a frame that outlives the box, or from 0.
QDoubleSpinBox* MakeSecondsBox(double samplesPerSecond, QWidget* parent,
                               const std::uint32_t* here = nullptr);

// A frame and the same instant in seconds; each follows the other. Both take times in every way in
// which a person types them; relative ones count from the frame that was set.
class FrameTimeField : public QWidget {
    Q_OBJECT

  public:
    enum class Unit { kFrame, kTime };

    // Frames from 0 to `highestFrame`.
    FrameTimeField(std::uint32_t highestFrame, std::uint32_t samplesPerSecond,
                   QWidget* parent = nullptr);
    void SetFrame(std::uint32_t frame);
    std::uint32_t Frame() const { return static_cast<std::uint32_t>(frame_->value()); }
    double Seconds() const { return seconds_->value(); }
    // The box that was changed last.
    Unit LastUnit() const { return lastUnit_; }
    void SelectFrameText();

  Q_SIGNALS:
    // By the person, not by SetFrame.
    void Edited();

  private:
    void TakeFrame(int frame);
    void TakeSeconds(double seconds);

    double rate_;
    Unit lastUnit_ = Unit::kFrame;
    std::uint32_t here_ = 0;  // from which relative times count
    QSpinBox* frame_;
    QDoubleSpinBox* seconds_;
};

}  // namespace sonavel
