#include "view/ui/level_dialogs.h"

#include <QGroupBox>
#include <QHBoxLayout>

#include "sound/sample_types.h"

namespace sonavel {

namespace {

QLabel* RangeLabel(const MixQuestion& range, QWidget* parent) {
    return new QLabel(QObject::tr("Start: %1    End: %2").arg(range.startFrame).arg(range.endFrame),
                      parent);
}

// Sums are not clipped, and those of 8-bit samples are of their bytes, which count from 0.
QString WrapText(unsigned bits) {
    if (!AreWholeNumbers(bits))
        return QObject::tr(
            "Sums louder than full scale are kept as they are.\nLevels that add up "
            "to 100 % never make them.");
    const QString sums =
        bits == ByteSample::kBits
            ? QObject::tr("8-bit samples add up as bytes, silence being 128:\nsums beyond 255")
            : QObject::tr("Sums louder than full scale");
    return QObject::tr("%1 wrap around to the other sign.\nLevels that add up to 100 % never do.")
        .arg(sums);
}

QLabel* WrapNote(const MixQuestion& range, QWidget* parent) {
    auto* note = new QLabel(WrapText(range.bits), parent);
    note->setObjectName(QStringLiteral("wrapNote"));
    return note;
}

PercentSlider* AddLevel(QFormLayout& form, const QString& label, int percent) {
    auto* slider = new PercentSlider(kHighestMixPercent, percent);
    form.addRow(label, slider);
    const auto* group = qobject_cast<QGroupBox*>(form.parentWidget());
    QString name = label;
    name.remove(u'&');
    slider->SetSpokenName(group ? QStringLiteral("%1: %2").arg(group->title(), name) : name);
    return slider;
}

}  // namespace

MixDialog::MixDialog(const MixQuestion& range, const MixChoice& initial, QWidget* parent)
    : FormDialog(tr("Mix"), parent) {
    Body().addWidget(RangeLabel(range, this));
    clipboard_ = AddLevel(AddForm(tr("Clipboard")), tr("&Level"), initial.clipboardPercent);
    destination_ = AddLevel(AddForm(tr("Destination")), tr("Le&vel"), initial.destinationPercent);
    Body().addWidget(WrapNote(range, this));
    clipboard_->setFocus();
}

MixChoice MixDialog::Choice() const {
    return {clipboard_->Value(), destination_->Value()};
}

CrossfadeDialog::CrossfadeDialog(const MixQuestion& range, const CrossfadeChoice& initial,
                                 QWidget* parent)
    : FormDialog(tr("Crossfade"), parent) {
    Body().addWidget(RangeLabel(range, this));
    QFormLayout& clipboard = AddForm(tr("Clipboard"));
    clipboardStart_ = AddLevel(clipboard, tr("&Start Level"), initial.clipboardStartPercent);
    clipboardEnd_ = AddLevel(clipboard, tr("&End Level"), initial.clipboardEndPercent);
    QFormLayout& destination = AddForm(tr("Destination"));
    destinationStart_ = AddLevel(destination, tr("S&tart Level"), initial.destinationStartPercent);
    destinationEnd_ = AddLevel(destination, tr("E&nd Level"), initial.destinationEndPercent);
    Body().addWidget(WrapNote(range, this));
    clipboardStart_->setFocus();
}

CrossfadeChoice CrossfadeDialog::Choice() const {
    return {clipboardStart_->Value(), clipboardEnd_->Value(), destinationStart_->Value(),
            destinationEnd_->Value()};
}

PasteReplicateDialog::PasteReplicateDialog(int initial, QWidget* parent)
    : FormDialog(tr("Paste Replicate"), parent), count_(new QSpinBox(this)) {
    count_->setRange(1, kHighestReplicateCount);
    count_->setValue(initial);
    count_->setAlignment(Qt::AlignRight);
    AddForm().addRow(tr("&How many times do you paste?"), count_);
    count_->setFocus();
    count_->selectAll();
}

}  // namespace sonavel
