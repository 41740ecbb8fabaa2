// A rectangle in whole pixels, left and top inside, right and bottom outside.
#pragma once

namespace sonavel {

struct Rectangle {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool Empty() const { return right <= left || bottom <= top; }
    bool Contains(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
    // Empty, but not normalised, where the two do not meet.
    Rectangle Intersected(const Rectangle& other) const {
        return {left > other.left ? left : other.left, top > other.top ? top : other.top,
                right < other.right ? right : other.right,
                bottom < other.bottom ? bottom : other.bottom};
    }

    bool operator==(const Rectangle&) const = default;
};

}  // namespace sonavel
