// Commands that go to places of a sound or select between them: markers, former selections, former
// zooms, and what a person types.
#pragma once

#include <cstdint>
#include <string_view>

#include "view/sound_view.h"

namespace sonavel {

// The next marker behind the cursor, or the last one before it.
Outcome GoToNextMarker(CSoundView& view);
Outcome GoToPreviousMarker(CSoundView& view);
// From the selection's start, or the cursor without one, to the marker behind its end, or to the
// end of the sound.
Outcome SelectToNextMarker(CSoundView& view);
Outcome SelectLastAgain(CSoundView& view);
// On what was off, and off what was on.
Outcome TurnRound(CSoundView& view, ViewSwitch which);
Outcome GoToPreviousZoom(CSoundView& view);
Outcome GoToNextZoom(CSoundView& view);
// Fills the window with the selection.
Outcome ZoomSelection(CSoundView& view);
// Shows the strip with the whole sound, or hides it, of all sounds.
Outcome SwitchOverview(CSoundView& view);

// What is typed into the status bar: a place, to which the cursor goes, or two with " - " or "to"
// between them, which are selected; of the second one "+5" counts from the first. Places are times
// as ParseTime reads them; relative ones count from the cursor. A part in brackets is passed over.
Outcome GoToTyped(CSoundView& view, std::string_view text);

// --- The chosen marker: the one whose flag was pressed last, else the one nearest to the cursor

// 0 without markers.
std::uint32_t ChosenMarkerId(const CSoundView& view);
Outcome PlayMarkerRegion(CSoundView& view);
Outcome SelectMarkerRegion(CSoundView& view);
// The marker becomes a region of what is selected.
Outcome MakeRegionFromSelection(CSoundView& view);
Outcome RemoveChosenMarker(CSoundView& view);
// Where the flag of a pressed marker is chosen, that one, else what is selected.
Outcome DeleteChosen(CSoundView& view);

// The window asks for the name of a new marker, at the play position or at the cursor, or for
// another name of the chosen one.
Outcome AskNameOfNewMarker(CSoundView& view);
Outcome AskNameOfMarker(CSoundView& view);

}  // namespace sonavel
