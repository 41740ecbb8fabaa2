// Draws a polyline that runs from left to right in whole pixels into an image. Within one pixel
// column such a line is one run of rows, so it is filled as rows of many columns at a time instead
// of line by line.
#pragma once

#include <QImage>
#include <span>
#include <vector>

#include "view/draw/envelope.h"
#include "view/state/rectangle.h"

namespace sonavel {

class ColumnRaster {
  public:
    // Draws inside `clip` only; pixels of the image.
    explicit ColumnRaster(const Rectangle& clip);

    // The polyline goes on to (x, y) from where it stands; the first call sets where it starts. x
    // never gets smaller.
    void LineTo(int x, int y, QRgb colour);
    // Into an image of 32 bits a pixel that holds the clip.
    void Fill(QImage& image) const;

  private:
    // Rows [top, bottom) of one column.
    struct Run {
        int column = 0;
        int top = 0;
        int bottom = 0;
        QRgb colour = 0;
    };

    void AddRun(int x, int firstRow, int lastRow, QRgb colour);
    void FillBlock(QImage& image, int firstColumn, int count) const;

    Rectangle clip_;
    // By column of the clip.
    std::vector<int> tops_;
    std::vector<int> bottoms_;
    std::vector<QRgb> colours_;
    // Where two colours meet in a column: what the first of them left behind, drawn below the rest.
    std::vector<Run> underneath_;
    bool started_ = false;
    int x_ = 0;
    int y_ = 0;
};

}  // namespace sonavel
