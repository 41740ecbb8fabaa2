#include "view/ui/column_raster.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace sonavel {

namespace {

// Columns filled together: enough to make a row of them worth its memory page, few enough to be
// alike.
constexpr int kBlockColumns = 32;

// The row of a line at `halves` half columns from its start.
int RowAt(int y0, int y1, int columns, std::int64_t halves) {
    const std::int64_t clamped = std::clamp<std::int64_t>(halves, 0, 2 * std::int64_t{columns});
    return y0 + static_cast<int>((std::int64_t{y1} - y0) * clamped / (2 * std::int64_t{columns}));
}

// The runs of a few columns side by side.
class ColumnBlock {
  public:
    explicit ColumnBlock(int count) : count_(count) {}

    void Set(int column, int top, int bottom, QRgb colour) {
        tops_[column] = top;
        heights_[column] = static_cast<unsigned>(std::max(0, bottom - top));
        colours_[column] = colour;
        top_ = std::min(top_, top);
        bottom_ = std::max(bottom_, bottom);
        innerTop_ = std::max(innerTop_, top);
        innerBottom_ = std::min(innerBottom_, bottom);
    }

    // `pixels`: row 0 of the first column; `stride` pixels a row.
    void Fill(QRgb* pixels, qsizetype stride) const {
        const bool hasInner = innerTop_ < innerBottom_;
        const int firstInner = hasInner ? innerTop_ : bottom_;
        const int lastInner = hasInner ? innerBottom_ : bottom_;
        for (int row = top_; row < firstInner; ++row) FillRow(pixels + row * stride, row);
        // Where every column has a run there is nothing to choose.
        for (int row = firstInner; row < lastInner; ++row)
            std::copy_n(colours_, count_, pixels + row * stride);
        for (int row = lastInner; row < bottom_; ++row) FillRow(pixels + row * stride, row);
    }

  private:
    void FillRow(QRgb* pixels, int row) const {
        // A whole block has a length that the compiler knows.
        if (count_ == kBlockColumns)
            for (int i = 0; i < kBlockColumns; ++i) pixels[i] = Choose(i, row, pixels[i]);
        else
            for (int i = 0; i < count_; ++i) pixels[i] = Choose(i, row, pixels[i]);
    }
    QRgb Choose(int column, int row, QRgb behind) const {
        const bool inside = static_cast<unsigned>(row - tops_[column]) < heights_[column];
        return inside ? colours_[column] : behind;
    }

    int count_;
    int tops_[kBlockColumns] = {};
    unsigned heights_[kBlockColumns] = {};
    QRgb colours_[kBlockColumns] = {};
    int top_ = std::numeric_limits<int>::max();
    int bottom_ = 0;
    int innerTop_ = 0;
    int innerBottom_ = std::numeric_limits<int>::max();
};

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
    ColumnBlock block(count);
    for (int i = 0; i < count; ++i) {
        const auto column = static_cast<std::size_t>(firstColumn) + static_cast<std::size_t>(i);
        block.Set(i, tops_[column], bottoms_[column], colours_[column]);
    }
    const qsizetype stride = image.bytesPerLine() / qsizetype{sizeof(QRgb)};
    block.Fill(reinterpret_cast<QRgb*>(image.bits()) + clip_.left + firstColumn, stride);
}

}  // namespace sonavel
