// The look of the whole program: style, colours, fonts.
#pragma once

namespace sonavel {

// The Fusion style in a light or a dark palette, whichever is nearer to the desktop's own, and
// fonts that have the Korean letters of the program's texts. The application must exist.
void ApplyLook();

}  // namespace sonavel
