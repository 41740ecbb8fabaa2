// How a source is heard: in the steps of the table or smoothly, how its level falls with the
// distance, and what only smooth moving sources have.
#pragma once

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGroupBox>

#include "spatial/placing.h"
#include "spatial/ui/source_motion.h"

namespace sonavel {

enum class LawOffer { kOff, kOn };

class SmoothBox : public QGroupBox {
    Q_OBJECT

  public:
    // `ears`: the name of the responses that smooth sources are heard with.
    SmoothBox(SourceMotion motion, const QString& ears, LawOffer law, QWidget* parent = nullptr);

    // Of the placing, all but where the source is and which way it takes.
    void Show(const Placing& placing);
    Placing Chosen() const;

  Q_SIGNALS:
    // By the person.
    void Edited();

  private:
    QCheckBox* AddBox(const QString& text, const QString& toolTip);
    QDoubleSpinBox* AddNumber(const QString& name, const QString& prefix, const QString& suffix,
                              const QString& toolTip);
    void AddNumbers();
    void LayOut();
    void ShowLaw();
    void TakeLaw();
    void EnableFields();

    SourceMotion motion_;
    DistanceLaw law_;  // of smooth sources, which the fields show while they are chosen
    QCheckBox* smooth_;
    QCheckBox* doppler_;
    QDoubleSpinBox* metres_ = nullptr;
    QDoubleSpinBox* least_ = nullptr;
    QDoubleSpinBox* fall_ = nullptr;
};

}  // namespace sonavel
