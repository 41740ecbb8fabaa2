// The transfer curve of the dynamics, with two points to drag: the knee and the end.
#pragma once

#include <optional>

#include "effects/dynamics.h"
#include "effects/ui/plot_widget.h"

namespace sonavel {

// What the dialog's fields show of one channel.
struct DynamicsFields {
    double threshold = 100;  // percent
    double below = 1;        // the ratio 1:below
    double above = 1;

    bool operator==(const DynamicsFields&) const = default;
};

enum class DynamicsPoint { kKnee, kEnd };

// The fields after a point was dragged to this place, both in percent of full scale.
DynamicsFields DragDynamicsPoint(const DynamicsFields& fields, DynamicsPoint point, double input,
                                 double output);
// What the curve makes of an input, in percent of full scale.
double DynamicsOutput(const DynamicsFields& fields, double input);

class DynamicsPicture : public PlotWidget {
    Q_OBJECT

  public:
    explicit DynamicsPicture(QWidget* parent);

    void SetFields(const DynamicsFields& fields);
    // Where a point stands in the widget; nothing when the curve does not have it.
    std::optional<QPointF> PlaceOf(DynamicsPoint point) const;

  Q_SIGNALS:
    void Dragged(const sonavel::DynamicsFields& fields);

  protected:
    void DrawPicture(QPainter& painter) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    std::optional<DynamicsPoint> PointNear(QPointF place) const;
    void DrawPoint(QPainter& painter, DynamicsPoint point) const;

    DynamicsFields fields_;
    std::optional<DynamicsPoint> dragged_;
};

}  // namespace sonavel
