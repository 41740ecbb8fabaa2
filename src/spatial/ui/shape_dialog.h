// Asks for the shape of a path to begin with.
#pragma once

#include <QComboBox>

#include "spatial/path_shapes.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class ShapeDialog : public FormDialog {
    Q_OBJECT

  public:
    ShapeDialog(const ShapeNumbers& first, QWidget* parent);

    ShapeNumbers Chosen() const;

  private:
    void ShowMeaning();

    QComboBox* shape_;
    QSpinBox* radius_;
    QSpinBox* height_;
    QSpinBox* turns_;
    QLabel* meaning_;
};

}  // namespace sonavel
