#include "spatial/ui/smooth_box.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "spatial/scene_points.h"

namespace sonavel {
SmoothBox::SmoothBox(SourceMotion motion, const QString& ears, LawOffer law, QWidget* parent)
    : QGroupBox(tr("Heard"), parent), motion_(motion) {
    smooth_ = AddBox(
        tr("Smoot&h"),
        tr("Blends the responses of %1 in place of taking the nearest of the table").arg(ears));
    doppler_ = AddBox(tr("Dopp&ler"), tr("The pitch follows the speed towards the head and away"));
    AddNumbers();
    LayOut();
    for (QWidget* of : std::initializer_list<QWidget*>{doppler_, metres_})
        of->setVisible(motion == SourceMotion::kMoving);
    for (QWidget* of : {least_, fall_}) of->setVisible(law == LawOffer::kOn);
    Show({});
}

QCheckBox* SmoothBox::AddBox(const QString& text, const QString& toolTip) {
    auto* box = new QCheckBox(text, this);
    box->setToolTip(toolTip);
    connect(box, &QCheckBox::toggled, this, &SmoothBox::EnableFields);
    connect(box, &QCheckBox::clicked, this, &SmoothBox::Edited);
    return box;
}

QDoubleSpinBox* SmoothBox::AddNumber(const QString& name, const QString& prefix,
                                     const QString& suffix, const QString& toolTip) {
    auto* box = new QDoubleSpinBox(this);
    box->setObjectName(name);
    box->setAccessibleName(name);
    box->setPrefix(prefix);
    box->setSuffix(suffix);
    box->setToolTip(toolTip);
    return box;
}

void SmoothBox::AddNumbers() {
    metres_ = AddNumber("Metres", tr("1.0 unit is "), tr(" m"),
                        tr("How long a unit of the scene is, for the Doppler shift"));
    metres_->setDecimals(3);
    metres_->setRange(kLeastMetresPerUnit, kGreatestMetresPerUnit);
    least_ = AddNumber("Least distance", tr("full level up to "), {},
                       tr("The distance, in hundredths, up to which the level stays full"));
    least_->setDecimals(0);
    least_->setRange(kHundredths * kLeastLeastDistance, kHundredths * kGreatestLeastDistance);
    fall_ =
        AddNumber("Fall", QStringLiteral("\u2212"), tr(" dB at twice as far"),
                  tr("The distance law: 6 dB as in the open, 0 dB for the same level everywhere"));
    fall_->setDecimals(1);
    fall_->setRange(0, kGreatestFall);
    connect(metres_, &QDoubleSpinBox::valueChanged, this, &SmoothBox::Edited);
    for (QDoubleSpinBox* box : {least_, fall_})
        connect(box, &QDoubleSpinBox::valueChanged, this, &SmoothBox::TakeLaw);
}

void SmoothBox::LayOut() {
    auto* rows = new QVBoxLayout(this);
    auto* ways = new QHBoxLayout;
    ways->addWidget(smooth_);
    ways->addWidget(doppler_);
    ways->addStretch(1);
    ways->addWidget(metres_);
    auto* law = new QHBoxLayout;
    law->addWidget(least_, 1);
    law->addWidget(fall_, 1);
    rows->addLayout(ways);
    rows->addLayout(law);
}

void SmoothBox::TakeLaw() {
    law_ = {fall_->value(), least_->value() / kHundredths};
    Q_EMIT Edited();
}

void SmoothBox::ShowLaw() {
    const QSignalBlocker quietLeast(least_), quietFall(fall_);
    const DistanceLaw shown = smooth_->isChecked() ? law_ : DistanceLaw{};
    least_->setValue(kHundredths * shown.leastDistance);
    fall_->setValue(shown.fall);
}

void SmoothBox::EnableFields() {
    if (!fall_) return;
    const bool smooth = smooth_->isChecked();
    doppler_->setEnabled(smooth);
    metres_->setEnabled(smooth && doppler_->isChecked());
    least_->setEnabled(smooth);
    fall_->setEnabled(smooth);
    ShowLaw();
}

void SmoothBox::Show(const Placing& placing) {
    law_ = placing.law;
    smooth_->setChecked(placing.smoothness == Smoothness::kSmooth);
    doppler_->setChecked(placing.doppler == Doppler::kOn);
    metres_->setValue(placing.metresPerUnit);
    EnableFields();
}

Placing SmoothBox::Chosen() const {
    const bool moves = motion_ == SourceMotion::kMoving;
    const bool smooth = smooth_->isChecked();
    return {.kind = moves ? PlacingKind::kPath : PlacingKind::kPoint,
            .smoothness = smooth ? Smoothness::kSmooth : Smoothness::kStepped,
            .doppler = moves && smooth && doppler_->isChecked() ? Doppler::kOn : Doppler::kOff,
            .metresPerUnit = metres_->value(),
            .law = smooth ? law_ : DistanceLaw{}};
}

}  // namespace sonavel
