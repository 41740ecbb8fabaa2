#include "spatial/ui/point_numbers.h"

#include <QSignalBlocker>
#include <cmath>

namespace sonavel {
namespace {

constexpr double kOverhead = 90;
constexpr double kMostDistance = 17400;  // of the farthest point that the coordinates reach

struct FieldText {
    const char* label;
    const char* suffix;
    int row;
    int column;
};

// In the order of the fields.
constexpr FieldText kTexts[] = {
    {"&x (right):", "", 0, 0}, {"&y (front):", "", 1, 0},  {"&z (up):", "", 2, 0},
    {"Az&imuth:", "°", 0, 2},  {"&Elevation:", "°", 1, 2}, {"Dis&tance:", "", 2, 2},
    {"&Gain:", " %", 3, 2},
};

UserPoint PointOf(const PolarPosition& polar) {
    return NearestUserPoint(PositionOf(polar));
}

// Whether the place is the point's but for rounding.
bool StandsFor(const PolarPosition& polar, const UserPoint& point) {
    const SourcePosition fine = PositionOf(polar);
    const SourcePosition rounded = PositionOf(point);
    return std::abs(fine.x - rounded.x) < 0.006f && std::abs(fine.y - rounded.y) < 0.006f &&
           std::abs(fine.z - rounded.z) < 0.006f;
}

}  // namespace

PointNumbers::PointNumbers(Editing editing, QWidget* parent)
    : QGroupBox(tr("Selected point"), parent), editing_(editing), heardAs_(new QLabel(this)) {
    auto* grid = new QGridLayout(this);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    for (int field = 0; field < kFieldCount; ++field) AddField(*grid, static_cast<Field>(field));
    SetRanges();
    heardAs_->setText(tr("Heard as from straight above."));
    QSizePolicy policy = heardAs_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    heardAs_->setSizePolicy(policy);
    grid->addWidget(heardAs_, 4, 0, 1, 4);
    ShowNothing();
}

void PointNumbers::AddField(QGridLayout& grid, Field field) {
    const FieldText& text = kTexts[field];
    auto* box = new QDoubleSpinBox(this);
    fields_[field] = box;
    box->setObjectName(QString::fromUtf8(text.label).remove(u'&').remove(u':'));
    box->setSuffix(QString::fromUtf8(text.suffix));
    box->setAlignment(Qt::AlignRight);
    box->setDecimals(1);
    box->setKeyboardTracking(false);
    if (editing_ == Editing::kOff) {
        box->setReadOnly(true);
        box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    }
    auto* label = new QLabel(tr(text.label), this);
    label->setBuddy(box);
    grid.addWidget(label, text.row, text.column);
    grid.addWidget(box, text.row, text.column + 1);
    connect(box, &QDoubleSpinBox::valueChanged, this, [this, field] { OnEdited(field); });
}

void PointNumbers::SetRanges() {
    for (const Field field : {kX, kY, kZ}) {
        fields_[field]->setRange(kLeastCoordinate, kGreatestCoordinate);
        if (editing_ == Editing::kOn) fields_[field]->setDecimals(0);
    }
    fields_[kAzimuth]->setRange(0, 359.9);
    fields_[kAzimuth]->setWrapping(true);
    fields_[kElevation]->setRange(-90, 90);
    fields_[kDistance]->setRange(0, kMostDistance);
    fields_[kGain]->setRange(0.3, 100);
}

void PointNumbers::ShowPosition(const SourcePosition& position) {
    setEnabled(true);
    if (editing_ == Editing::kOff || !StandsFor(polar_, NearestUserPoint(position)))
        polar_ = PolarOf(position);
    Fill(position);
}

void PointNumbers::SetLaw(const DistanceLaw& law) {
    law_ = law;
    fields_[kGain]->setReadOnly(!IsEditable() || law.fall == 0);
}

void PointNumbers::ShowNothing() {
    setEnabled(false);
    heardAs_->hide();
    for (QDoubleSpinBox* field : fields_) {
        const QSignalBlocker quiet(field);
        field->clear();
    }
}

void PointNumbers::Fill(const SourcePosition& position) {
    SetValue(kX, kHundredths * double{position.x});
    SetValue(kY, kHundredths * double{position.y});
    SetValue(kZ, kHundredths * double{position.z});
    SetValue(kAzimuth, std::fmod(std::round(polar_.azimuth * 10) / 10, 360));
    SetValue(kElevation, polar_.elevation);
    SetValue(kDistance, kHundredths * polar_.distance);
    SetValue(kGain, kHundredths * law_.GainAt(polar_.distance));
    const bool overhead = double{PositionToDirection(position).elevation} == kOverhead;
    heardAs_->setVisible(overhead && polar_.elevation < kOverhead);
}

void PointNumbers::SetValue(Field field, double value) {
    const QSignalBlocker quiet(fields_[field]);
    // Also gives a cleared box its text back when the value is the same.
    fields_[field]->setValue(value);
}

void PointNumbers::OnEdited(Field field) {
    switch (field) {
        case kX:
        case kY:
        case kZ:
            return TakeCoordinates();
        case kGain:
            return TakePolar({polar_.azimuth, polar_.elevation, DistanceFromGain()});
        case kDistance:
            return TakePolar({polar_.azimuth, polar_.elevation, Value(kDistance) / kHundredths});
        default:
            return TakePolar({field == kAzimuth ? Value(kAzimuth) : polar_.azimuth,
                              field == kElevation ? Value(kElevation) : polar_.elevation,
                              polar_.distance});
    }
}

void PointNumbers::TakeCoordinates() {
    const auto hundredths = [this](Field field) {
        return static_cast<int>(std::lround(Value(field)));
    };
    const UserPoint point{hundredths(kX), hundredths(kY), hundredths(kZ)};
    ShowPosition(PositionOf(point));
    Q_EMIT Edited(point);
}

void PointNumbers::TakePolar(const PolarPosition& polar) {
    polar_ = polar;
    const UserPoint point = PointOf(polar);
    ShowPosition(PositionOf(point));
    Q_EMIT Edited(point);
}

// Within the least distance every one has the full gain.
double PointNumbers::DistanceFromGain() const {
    const double distance = law_.DistanceOf(Value(kGain) / kHundredths);
    const bool inside = Value(kGain) >= kHundredths && polar_.distance <= law_.leastDistance;
    return inside ? polar_.distance : distance;
}

}  // namespace sonavel
