// The pictures of the logo: a waveform that grows under the product's name, drawn sharp at any
// size.
#pragma once

#include <QPixmap>

namespace sonavel {

inline constexpr int kLogoPictures = 11;
inline constexpr QSize kLogoSize{460, 230};  // in device-independent pixels
inline constexpr QSize kAboutPictureSize{320, 160};

// Picture 0 has an empty line, the last the whole wave.
QPixmap LogoPicture(int index, const QSize& size, qreal devicePixelRatio);

}  // namespace sonavel
