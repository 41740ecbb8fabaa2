// What screen readers hear of the things that the toolkit knows nothing of.
#pragma once

namespace sonavel {

// Has the toolkit ask these classes first: waveforms, menus, meters, 3D scenes, sliders whose
// positions run against their values, windows that are no dialogs. Once a program.
void InstallAccessibility();

}  // namespace sonavel
