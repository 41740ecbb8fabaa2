// The base of the effects' pictures: a plane with two labelled axes on which a picture draws.
#pragma once

#include <QPainter>
#include <QWidget>
#include <functional>
#include <vector>

namespace sonavel {

struct PlotAxis {
    enum class Scale { kLinear, kLogarithmic };

    double least = 0;
    double greatest = 1;
    Scale scale = Scale::kLinear;
    std::vector<double> ticks;
    const char* unit = "";  // beside the last tick
};

class PlotWidget : public QWidget {
    Q_OBJECT

  public:
    PlotWidget(PlotAxis across, PlotAxis up, QSize size, QWidget* parent);

    QSize sizeHint() const override { return size_; }
    QSize minimumSizeHint() const override { return size_; }

    // Where a place on the plane lies in the widget, and back.
    QPointF PointAt(double across, double up) const;
    double AcrossAt(double x) const;
    double UpAt(double y) const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    // Clipped to the plane.
    virtual void DrawPicture(QPainter& painter) const = 0;

    const PlotAxis& Across() const { return across_; }
    const PlotAxis& Up() const { return up_; }
    QRectF Plane() const;
    QPen CurvePen() const;
    QColor AccentColour() const;
    // One value for each pixel column; where `until` is given, only up to that place.
    void DrawCurve(QPainter& painter, const std::function<double(double across)>& curve,
                   double until) const;

  private:
    void DrawGrid(QPainter& painter) const;
    void DrawAcrossLabels(QPainter& painter) const;
    void DrawUpLabels(QPainter& painter) const;

    PlotAxis across_;
    PlotAxis up_;
    QSize size_;
};

}  // namespace sonavel
