#include "view/ui/column_raster.h"

#include <algorithm>
#include <cstdint>

namespace sonavel {

namespace {

// A cache line of pixels: what one row costs at least.
constexpr int kBlockColumns = 16;

// The row of a line at `halves` half columns from its start.
int RowAt(int y0, int y1, int columns, std::int64_t halves) {
    const std::int64_t clamped = std::clamp<std::int64_t>(halves, 0, 2 * std::int64_t{columns});
    return y0 + static_cast<int>((std::int64_t{y1} - y0) * clamped / (2 * std::int64_t{columns}));
}

}  // namespace

ColumnRaster::ColumnRaster(const Rectangle& clip)
    : clip_(clip),
      tops_(static_cast<std::size_t>(std::max(0, clip.Width())), clip.bottom),
      bottoms_(tops_.size(), clip.top),
      colours_(tops_.size(), 0) {}

void ColumnRaster::LineTo(int x, int y, QRgb colour) {
    if (started_ && x == x_) {
        AddRun(x, y_, y, colour);
    } else if (started_) {
        const int columns = x - x_;
        const int first = std::max(x_, clip_.left) - x_;
        const int last = std::min(x, clip_.right - 1) - x_;
        for (int i = first; i <= last; ++i)
            AddRun(x_ + i, RowAt(y_, y, columns, 2 * std::int64_t{i} - 1),
                   RowAt(y_, y, columns, 2 * std::int64_t{i} + 1), colour);
    }
    started_ = true;
    x_ = x;
    y_ = y;
}

void ColumnRaster::AddRun(int x, int firstRow, int lastRow, QRgb colour) {
    if (x < clip_.left || x >= clip_.right) return;
    const int top = std::clamp(std::min(firstRow, lastRow), clip_.top, clip_.bottom);
    const int bottom = std::clamp(std::max(firstRow, lastRow) + 1, clip_.top, clip_.bottom);
    const auto column = static_cast<std::size_t>(x - clip_.left);
    if (bottoms_[column] > tops_[column] && colours_[column] != colour) {
        underneath_.push_back({x, tops_[column], bottoms_[column], colours_[column]});
        tops_[column] = clip_.bottom;
        bottoms_[column] = clip_.top;
    }
    colours_[column] = colour;
    tops_[column] = std::min(tops_[column], top);
    bottoms_[column] = std::max(bottoms_[column], bottom);
}

void ColumnRaster::Fill(QImage& image) const {
    for (const Run& run : underneath_)
        for (int row = run.top; row < run.bottom; ++row)
            reinterpret_cast<QRgb*>(image.scanLine(row))[run.column] = run.colour;
    const int columns = static_cast<int>(tops_.size());
    for (int column = 0; column < columns; column += kBlockColumns)
        FillBlock(image, column, std::min(kBlockColumns, columns - column));
}

void ColumnRaster::FillBlock(QImage& image, int firstColumn, int count) const {
    int tops[kBlockColumns];
    unsigned heights[kBlockColumns] = {};
    QRgb colours[kBlockColumns] = {};
    int top = clip_.bottom;
    int bottom = clip_.top;
    for (int i = 0; i < count; ++i) {
        const auto column = static_cast<std::size_t>(firstColumn + i);
        tops[i] = tops_[column];
        heights[i] = static_cast<unsigned>(std::max(0, bottoms_[column] - tops_[column]));
        colours[i] = colours_[column];
        top = std::min(top, tops[i]);
        bottom = std::max(bottom, bottoms_[column]);
    }
    const qsizetype stride = image.bytesPerLine() / qsizetype{sizeof(QRgb)};
    QRgb* pixels = reinterpret_cast<QRgb*>(image.bits()) + top * stride + clip_.left + firstColumn;
    for (int row = top; row < bottom; ++row, pixels += stride) {
        if (count == kBlockColumns) {
            for (int i = 0; i < kBlockColumns; ++i)
                pixels[i] =
                    static_cast<unsigned>(row - tops[i]) < heights[i] ? colours[i] : pixels[i];
        } else {
            for (int i = 0; i < count; ++i)
                if (static_cast<unsigned>(row - tops[i]) < heights[i]) pixels[i] = colours[i];
        }
    }
}

}  // namespace sonavel
