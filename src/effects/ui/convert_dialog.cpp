#include "effects/ui/convert_dialog.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QIntValidator>
#include <cstddef>

#include "effects/resample.h"
#include "platform/qt/utf8_text.h"
#include "sound/sample_types.h"
#include "sound/sound_texts.h"

namespace sonavel {

namespace {

constexpr std::uint32_t kOfferedRates[] = {8000,  11025, 16000, 22050, 24000, 32000,
                                           44100, 48000, 88200, 96000, 192000};

template <class Value>
void AddChoice(QComboBox& box, const QString& text, Value value) {
    box.addItem(text, static_cast<int>(value));
}

template <class Value>
void Choose(QComboBox& box, Value value) {
    box.setCurrentIndex(box.findData(static_cast<int>(value)));
}

QString WidthText(unsigned bits) {
    return AreWholeNumbers(bits) ? Utf8Text(BitsText(bits)) : QObject::tr("32-bit float");
}

}  // namespace

ConvertDialog::ConvertDialog(const Sound& sound, QWidget* parent)
    : FormDialog(tr("Convert"), parent),
      sound_(sound),
      rate_(new QComboBox(this)),
      resampled_(new QRadioButton(tr("Re&sample: it sounds the same"), this)),
      newSpeed_(new QRadioButton(tr("New s&peed: it plays faster or slower"), this)),
      bits_(new QComboBox(this)),
      dither_(new QCheckBox(tr("&Dither what is rounded"), this)),
      channels_(new QComboBox(this)),
      mode_(new QComboBox(this)),
      refusal_(new QLabel(this)) {
    AddRate();
    AddBits();
    AddChannels();
    AddOutlook();
    connect(rate_, &QComboBox::currentTextChanged, this, &ConvertDialog::ShowOutlook);
    connect(resampled_, &QRadioButton::toggled, this, &ConvertDialog::ShowOutlook);
    for (QComboBox* box : {bits_, channels_})
        connect(box, &QComboBox::currentIndexChanged, this, &ConvertDialog::ShowOutlook);
    ShowOutlook();
}

void ConvertDialog::AddRate() {
    for (const std::uint32_t rate : kOfferedRates) rate_->addItem(QString::number(rate));
    rate_->setEditable(true);
    rate_->setInsertPolicy(QComboBox::NoInsert);
    rate_->setValidator(new QIntValidator(1, static_cast<int>(kGreatestResampledRate), rate_));
    rate_->setCurrentText(QString::number(sound_.GetSamplesPerSecond()));
    rate_->setToolTip(tr("Samples a second, from the list or typed."));
    resampled_->setToolTip(tr("Computes new samples; pitch and length stay."));
    newSpeed_->setToolTip(tr("Keeps the samples; pitch and length change."));
    resampled_->setChecked(true);
    QFormLayout& form = AddForm(tr("Rate"));
    form.addRow(tr("&Rate in Hz:"), rate_);
    form.addRow(resampled_);
    form.addRow(newSpeed_);
}

void ConvertDialog::AddBits() {
    for (const unsigned bits : {ByteSample::kBits, WordSample::kBits, FloatSample::kBits})
        AddChoice(*bits_, WidthText(bits), bits);
    Choose(*bits_, sound_.GetBits());
    bits_->setToolTip(tr("How exactly each sample is kept."));
    dither_->setChecked(true);
    dither_->setToolTip(
        tr("Turns the error of rounding into an even, quiet noise; off, it is cut or rounded."));
    QFormLayout& form = AddForm(tr("Samples"));
    form.addRow(tr("&Bits:"), bits_);
    form.addRow(dither_);
}

void ConvertDialog::AddChannels() {
    AddChoice(*channels_, Utf8Text(ChannelsText(1)), 1);
    AddChoice(*channels_, Utf8Text(ChannelsText(2)), 2);
    Choose(*channels_, sound_.GetChannels());
    channels_->setToolTip(tr("One channel or two."));
    const bool isMono = sound_.GetChannels() == 1;
    AddChoice(*mode_, isMono ? tr("To the left alone") : tr("Left alone"), ChannelChoice::kLeft);
    AddChoice(*mode_, isMono ? tr("To the right alone") : tr("Right alone"), ChannelChoice::kRight);
    AddChoice(*mode_, isMono ? tr("To both") : tr("Mix of both"), ChannelChoice::kBothOrMix);
    Choose(*mode_, ChannelChoice::kBothOrMix);
    mode_->setToolTip(tr("Where the new channels come from."));
    QFormLayout& form = AddForm(tr("Channels"));
    form.addRow(tr("&Channels:"), channels_);
    form.addRow(tr("&Mode:"), mode_);
}

void ConvertDialog::AddOutlook() {
    auto* group = new QGroupBox(tr("Result"), this);
    auto* grid = new QGridLayout(group);
    grid->setHorizontalSpacing(20);
    const QString names[] = {tr("Rate:"), tr("Samples:"), tr("Channels:"), tr("Duration:"),
                             tr("Size:")};
    grid->addWidget(new QLabel(tr("Now"), group), 0, 1, Qt::AlignRight);
    grid->addWidget(new QLabel(tr("Then"), group), 0, 2, Qt::AlignRight);
    const Lines now = LinesOf(PresentOutlook(sound_));
    for (int i = 0; i < kLines; ++i) {
        const auto line = static_cast<std::size_t>(i);
        then_[line] = new QLabel(group);
        then_[line]->setObjectName(QStringLiteral("then"));
        grid->addWidget(new QLabel(names[line], group), i + 1, 0);
        grid->addWidget(new QLabel(now[line], group), i + 1, 1, Qt::AlignRight);
        grid->addWidget(then_[line], i + 1, 2, Qt::AlignRight);
    }
    grid->setColumnStretch(2, 1);
    refusal_->setObjectName(QStringLiteral("refusal"));
    grid->addWidget(refusal_, kLines + 1, 0, 1, 3);
    Body().addWidget(group);
}

FormatChange ConvertDialog::Choice() const {
    return {.samplesPerSecond = rate_->currentText().toUInt(),
            .rate = newSpeed_->isChecked() ? FormatChange::Rate::kNewSpeed
                                           : FormatChange::Rate::kResampled,
            .bits = bits_->currentData().toUInt(),
            .rounding = dither_->isChecked() ? Rounding::kDithered : Rounding::kPlain,
            .channels = channels_->currentData().toUInt(),
            .choice = static_cast<ChannelChoice>(mode_->currentData().toInt())};
}

ConvertDialog::Lines ConvertDialog::LinesOf(const FormatOutlook& outlook) {
    return {Utf8Text(RateText(outlook.samplesPerSecond)), WidthText(outlook.bits),
            Utf8Text(ChannelsText(outlook.channels)), Utf8Text(TimeText(outlook.Seconds())),
            Utf8Text(ByteCountText(outlook.bytes))};
}

void ConvertDialog::ShowOutlook() {
    const FormatChange change = Choice();
    const bool isNewRate = change.samplesPerSecond != sound_.GetSamplesPerSecond();
    resampled_->setEnabled(isNewRate);
    newSpeed_->setEnabled(isNewRate);
    dither_->setEnabled(change.bits < sound_.GetBits());
    mode_->setEnabled(change.channels != sound_.GetChannels());
    const Result<FormatOutlook> outlook = OutlookOf(sound_, change);
    const Lines lines = outlook ? LinesOf(*outlook) : Lines{};
    for (std::size_t i = 0; i < lines.size(); ++i) then_[i]->setText(lines[i]);
    refusal_->setText(Utf8Text(outlook.Reason()));
    const bool changes =
        isNewRate || change.bits != sound_.GetBits() || change.channels != sound_.GetChannels();
    SetOkEnabled(outlook && changes);
}

Outcome AskConversion(CSoundView& view, QWidget* parent) {
    ConvertDialog dialog(view.Sound(), parent);
    if (dialog.exec() != QDialog::Accepted) return Cancelled();
    return ConvertView(view, dialog.Choice());
}

}  // namespace sonavel
