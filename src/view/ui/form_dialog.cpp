#include "view/ui/form_dialog.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "sound/time_text.h"

namespace sonavel {

namespace {

constexpr int kHintRed = 0xC0;

QFormLayout* MakeForm() {
    auto* form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    form->setFormAlignment(Qt::AlignLeft | Qt::AlignTop);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    form->setHorizontalSpacing(12);
    return form;
}

QValidator::State StateOfTime(const QString& text, double rate, BareNumber bare) {
    const std::string typed = text.toStdString();
    if (ParseTime(typed, static_cast<std::uint32_t>(rate), bare)) return QValidator::Acceptable;
    constexpr std::string_view kSigns = "0123456789.:+-#ms \xE2\x88\x92";
    return typed.find_first_not_of(kSigns) == std::string::npos ? QValidator::Intermediate
                                                                : QValidator::Invalid;
}

std::int64_t FrameOfTime(const QString& text, double rate, BareNumber bare, std::uint32_t here) {
    const auto time = ParseTime(text.toStdString(), static_cast<std::uint32_t>(rate), bare);
    if (!time) return here;
    return time->from == TimeFrom::kHere ? here + time->frames : time->frames;
}

class FrameBox : public QSpinBox {
  public:
    FrameBox(double rate, const std::uint32_t& here, QWidget* parent)
        : QSpinBox(parent), rate_(rate), here_(here) {}

  protected:
    QValidator::State validate(QString& text, int&) const override {
        return StateOfTime(text, rate_, BareNumber::kFrames);
    }
    int valueFromText(const QString& text) const override {
        const std::int64_t frame = FrameOfTime(text, rate_, BareNumber::kFrames, here_);
        return static_cast<int>(std::clamp<std::int64_t>(frame, minimum(), maximum()));
    }

  private:
    double rate_;
    const std::uint32_t& here_;
};

class SecondsBox : public QDoubleSpinBox {
  public:
    SecondsBox(double rate, const std::uint32_t* here, QWidget* parent)
        : QDoubleSpinBox(parent), rate_(rate), here_(here) {
        setDecimals(3);
        setSingleStep(0.1);
    }

  protected:
    QValidator::State validate(QString& text, int&) const override {
        return StateOfTime(WithoutUnit(text), rate_, BareNumber::kSeconds);
    }
    double valueFromText(const QString& text) const override {
        const std::uint32_t here = here_ ? *here_ : 0;
        const auto frame =
            static_cast<double>(FrameOfTime(WithoutUnit(text), rate_, BareNumber::kSeconds, here));
        return std::clamp(frame / rate_, minimum(), maximum());
    }

  private:
    QString WithoutUnit(QString text) const {
        if (!suffix().isEmpty() && text.endsWith(suffix())) text.chop(suffix().size());
        return text;
    }

    double rate_;
    const std::uint32_t* here_;
};

}  // namespace

FormDialog::FormDialog(const QString& title, QWidget* parent,
                       QDialogButtonBox::StandardButtons buttons)
    : QDialog(parent), body_(new QVBoxLayout), buttons_(new QDialogButtonBox(buttons, this)) {
    setWindowTitle(title);
    auto* outer = new QVBoxLayout(this);
    outer->setSpacing(12);
    outer->addLayout(body_);
    outer->addWidget(buttons_);
    SetSizing(Sizing::kFixed);
    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

QFormLayout& FormDialog::AddForm(const QString& groupTitle) {
    QFormLayout* form = MakeForm();
    if (groupTitle.isEmpty()) {
        body_->addLayout(form);
    } else {
        auto* group = new QGroupBox(groupTitle, this);
        group->setLayout(form);
        body_->addWidget(group);
    }
    return *form;
}

void FormDialog::SetOkEnabled(bool enabled) {
    if (QPushButton* ok = buttons_->button(QDialogButtonBox::Ok)) ok->setEnabled(enabled);
}

void FormDialog::SetSizing(Sizing sizing) {
    layout()->setSizeConstraint(sizing == Sizing::kFixed ? QLayout::SetFixedSize
                                                         : QLayout::SetDefaultConstraint);
}

void FormDialog::showEvent(QShowEvent* event) {
    PutButtonsLast();
    // In a button, Enter would press that button instead of OK.
    if (QWidget* first = focusWidget() ? nullptr : FirstField())
        first->setFocus(Qt::TabFocusReason);
    QDialog::showEvent(event);
}

void FormDialog::PutButtonsLast() {
    QWidget* last = previousInFocusChain();
    while (last == buttons_ || buttons_->isAncestorOf(last)) last = last->previousInFocusChain();
    for (QAbstractButton* button : buttons_->buttons()) {
        setTabOrder(last, button);
        last = button;
    }
}

QWidget* FormDialog::FirstField() const {
    for (QWidget* next = nextInFocusChain(); next != this; next = next->nextInFocusChain()) {
        const bool takesKeys = next->isEnabled() && (next->focusPolicy() & Qt::TabFocus) != 0;
        if (takesKeys && next->isVisibleTo(this) && !qobject_cast<QPushButton*>(next)) return next;
    }
    return nullptr;
}

FieldHint::FieldHint(const QString& text, QWidget* parent) : QLabel(text, parent) {
    QPalette warning = palette();
    warning.setColor(QPalette::WindowText, QColor(kHintRed, 0, 0));
    setPalette(warning);
    QSizePolicy policy = sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    hide();
}

void FieldHint::SetShown(bool shown) {
    setVisible(shown);
}

PercentSlider::PercentSlider(int highest, int value, QWidget* parent)
    : QWidget(parent), slider_(new QSlider(Qt::Horizontal, this)), number_(new QSpinBox(this)) {
    slider_->setRange(0, highest);
    slider_->setPageStep(10);
    slider_->setTickPosition(QSlider::TicksBelow);
    slider_->setTickInterval(highest / 4);
    slider_->setMinimumWidth(220);
    number_->setRange(0, highest);
    number_->setSuffix(QStringLiteral(" %"));
    number_->setAlignment(Qt::AlignRight);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(slider_, 1);
    row->addWidget(number_);
    setFocusProxy(slider_);
    connect(slider_, &QSlider::valueChanged, number_, &QSpinBox::setValue);
    connect(number_, &QSpinBox::valueChanged, slider_, &QSlider::setValue);
    number_->setValue(value);
}

void PercentSlider::SetSpokenName(const QString& name) {
    slider_->setAccessibleName(name);
    number_->setAccessibleName(name);
}

QDoubleSpinBox* MakeSecondsBox(double samplesPerSecond, QWidget* parent,
                               const std::uint32_t* here) {
    return new SecondsBox(std::max(1.0, samplesPerSecond), here, parent);
}

FrameTimeField::FrameTimeField(std::uint32_t highestFrame, std::uint32_t samplesPerSecond,
                               QWidget* parent)
    : QWidget(parent),
      rate_(std::max(1u, samplesPerSecond)),
      frame_(new FrameBox(rate_, here_, this)),
      seconds_(MakeSecondsBox(rate_, this, &here_)) {
    constexpr std::uint32_t kHighest = std::numeric_limits<int>::max();
    frame_->setRange(0, static_cast<int>(std::min(highestFrame, kHighest)));
    frame_->setAlignment(Qt::AlignRight);
    frame_->setAccessibleName(tr("Frames"));
    frame_->setToolTip(tr("The place in frames; the seconds follow."));
    seconds_->setRange(0, std::ceil(highestFrame / rate_ * 1000) / 1000);
    seconds_->setAlignment(Qt::AlignRight);
    seconds_->setAccessibleName(tr("Seconds"));
    seconds_->setToolTip(tr("The place in seconds; the frames follow."));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(frame_, 1);
    row->addWidget(new QLabel(tr("Sample"), this));
    row->addSpacing(12);
    row->addWidget(seconds_, 1);
    row->addWidget(new QLabel(tr("Sec"), this));
    setFocusProxy(frame_);
    connect(frame_, &QSpinBox::valueChanged, this, &FrameTimeField::TakeFrame);
    connect(seconds_, &QDoubleSpinBox::valueChanged, this, &FrameTimeField::TakeSeconds);
}

void FrameTimeField::SetFrame(std::uint32_t frame) {
    const QSignalBlocker quiet(this);
    here_ = frame;
    frame_->setValue(static_cast<int>(
        std::min<std::uint32_t>(frame, static_cast<std::uint32_t>(frame_->maximum()))));
    TakeFrame(frame_->value());
}

void FrameTimeField::SelectFrameText() {
    frame_->selectAll();
}

void FrameTimeField::TakeFrame(int frame) {
    const QSignalBlocker quiet(seconds_);
    seconds_->setValue(frame / rate_);
    lastUnit_ = Unit::kFrame;
    Q_EMIT Edited();
}

void FrameTimeField::TakeSeconds(double seconds) {
    const QSignalBlocker quiet(frame_);
    frame_->setValue(
        static_cast<int>(std::min<double>(std::llround(seconds * rate_), frame_->maximum())));
    lastUnit_ = Unit::kTime;
    Q_EMIT Edited();
}

}  // namespace sonavel
