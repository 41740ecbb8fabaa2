// The numbers of one point: its coordinates, azimuth, elevation, distance and gain. Lengths are in
// hundredths of a scene unit, as in the point list.
#pragma once

#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <array>

#include "spatial/distance_law.h"
#include "spatial/scene_points.h"

namespace sonavel {

class PointNumbers : public QGroupBox {
    Q_OBJECT

  public:
    enum class Editing { kOff, kOn };

    PointNumbers(Editing editing, QWidget* parent = nullptr);

    void ShowPosition(const SourcePosition& position);
    void ShowNothing();
    // How the gain follows from the distance.
    void SetLaw(const DistanceLaw& law);
    bool IsEditable() const { return editing_ == Editing::kOn; }

  Q_SIGNALS:
    // By the person.
    void Edited(const UserPoint& point);

  private:
    enum Field { kX, kY, kZ, kAzimuth, kElevation, kDistance, kGain, kFieldCount };

    void AddField(QGridLayout& grid, Field field);
    void SetRanges();
    void Fill(const SourcePosition& position);
    void SetValue(Field field, double value);
    double Value(Field field) const { return fields_[field]->value(); }
    void OnEdited(Field field);
    void TakeCoordinates();
    void TakePolar(const PolarPosition& polar);
    double DistanceFromGain() const;

    Editing editing_;
    DistanceLaw law_;
    std::array<QDoubleSpinBox*, kFieldCount> fields_;
    // Finer than the hundredths that it stands for, so that small turns of a near point add up.
    PolarPosition polar_;
    QLabel* heardAs_;
};

}  // namespace sonavel
