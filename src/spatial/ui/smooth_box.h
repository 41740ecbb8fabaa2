// How a source is heard: in the steps of the table or smoothly, and what only smooth or moving
// sources have.
#pragma once

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGroupBox>

#include "spatial/placing.h"
#include "spatial/ui/source_motion.h"

namespace sonavel {

class SmoothBox : public QGroupBox {
    Q_OBJECT

  public:
    // `ears`: the name of the responses that smooth sources are heard with.
    SmoothBox(SourceMotion motion, const QString& ears, QWidget* parent = nullptr);

    // Of the placing, all but where the source is.
    void Show(const Placing& placing);
    Placing Chosen() const;

  Q_SIGNALS:
    // By the person.
    void Edited();

  private:
    QCheckBox* AddBox(const QString& text, const QString& toolTip);
    void EnableFields();

    SourceMotion motion_;
    QCheckBox* smooth_;
    QCheckBox* curve_;
    QCheckBox* doppler_;
    QDoubleSpinBox* metres_;
};

}  // namespace sonavel
