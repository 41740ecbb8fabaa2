#include "app/new_sound_dialog.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "sound/sample_types.h"

namespace sonavel {

namespace {

constexpr int kRates[] = {6000,  8000,  11025, 12000, 16000, 22050,
                          24000, 32000, 44100, 48000, 60000};
constexpr int kPreselectedRate = 44100;

struct RadioPair {
    QRadioButton* first;
    QRadioButton* second;
};

RadioPair AddGroup(QHBoxLayout& row, const QString& title, const QString& first,
                   const QString& second) {
    auto* group = new QGroupBox(title);
    auto* column = new QVBoxLayout(group);
    const RadioPair pair{new QRadioButton(first, group), new QRadioButton(second, group)};
    column->addWidget(pair.first);
    column->addWidget(pair.second);
    row.addWidget(group);
    return pair;
}

}  // namespace

NewSoundDialog::NewSoundDialog(const NewSoundChoice& initial, QWidget* parent)
    : FormDialog(tr("New"), parent), rate_(new QComboBox(this)), bits_(new QButtonGroup(this)) {
    for (const int rate : kRates) rate_->addItem(QString::number(rate));
    const QString wanted = QString::number(initial.samplesPerSecond);
    const QString shown = rate_->findText(wanted) < 0 ? QString::number(kPreselectedRate) : wanted;
    rate_->setCurrentText(shown);
    AddForm().addRow(tr("Sampling &Rate :"), rate_);

    auto* row = new QHBoxLayout;
    const RadioPair channels = AddGroup(*row, tr("Channels"), tr("&Mono"), tr("&Stereo"));
    const RadioPair bits = AddGroup(*row, tr("Sample Size"), tr("&8bit Data"), tr("&16bit Data"));
    Body().addLayout(row);
    stereo_ = channels.second;
    auto* floats = new QRadioButton(tr("32-bit &float"), this);
    Body().addWidget(floats);
    bits_->addButton(bits.first, ByteSample::kBits);
    bits_->addButton(bits.second, WordSample::kBits);
    bits_->addButton(floats, FloatSample::kBits);
    (initial.channels == 2 ? channels.second : channels.first)->setChecked(true);
    QAbstractButton* const shownBits = bits_->button(static_cast<int>(initial.bits));
    (shownBits ? shownBits : bits.first)->setChecked(true);
    rate_->setFocus();
}

NewSoundChoice NewSoundDialog::Choice() const {
    return {rate_->currentText().toUInt(), stereo_->isChecked() ? 2u : 1u,
            static_cast<unsigned>(bits_->checkedId())};
}

}  // namespace sonavel
