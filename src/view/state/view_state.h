// What a view shows and marks: its parts' places, its zoom, the selection and the cursor. What
// changes is noted for the window.
#pragma once

#include <cstdint>

#include <optional>

#include "view/state/view_history.h"
#include "view/state/view_zoom.h"

namespace sonavel {

class ViewState {
  public:
    // Both must outlive it.
    ViewState(const CWave& sound, const RepaintNotes& notes) : sound_(sound), notes_(notes) {}
    ViewState(const ViewState&) = delete;
    ViewState& operator=(const ViewState&) = delete;

    // --- Sizes

    // The first show: the zoom begins as the default one.
    void Show(const GeometryRequest& request, OpeningZoom opening);
    // Keeps both zoom ratios.
    void Resize(const GeometryRequest& request);
    bool IsShown() const { return shown_; }
    // The client area, from 0, 0.
    const Rectangle& Client() const { return client_; }
    const ViewGeometry& Geometry() const { return geometry_; }
    int WaveformWidth() const { return geometry_.waveform.Width(); }
    int WaveformHeight() const { return geometry_.waveform.Height(); }

    ViewZoom& Zoom() { return zoom_; }
    const ViewZoom& Zoom() const { return zoom_; }

    // --- Selection and cursor

    Selection GetSelection() const { return selectionEnds_.Range(); }
    bool HasSelection() const { return !GetSelection().IsEmpty(); }
    // For the moves that go on from them; everything else works on the selection.
    const SelectionEnds& GetSelectionEnds() const { return selectionEnds_; }
    std::uint32_t Cursor() const { return cursor_; }
    // Each is clamped to the sound and repaints what differs; start and end may come in either
    // order.
    void SetSelection(std::uint32_t start, std::uint32_t end);
    void SetCursor(std::uint32_t frame);
    // Moves the start alone, past the end too; the other end stays where it is.
    void SetSelectionStart(std::uint32_t frame);
    // Brings the selection before the present one back, then those before it; false where there was
    // none.
    bool BringSelectionBack();
    bool HadSelection() const { return !pastSelections_.IsEmpty(); }
    // The marker whose flag was pressed, until selection or cursor change.
    std::optional<std::uint32_t> ChosenMarker() const { return chosenMarker_; }
    void ChooseMarker(std::uint32_t id);
    void ForgetMarker() { chosenMarker_.reset(); }
    // The sound may be shorter than before.
    void ClampToSound();

  private:
    void LayOut(const GeometryRequest& request);
    void StoreSelection(const SelectionEnds& ends);
    void NoteFrames(std::uint32_t a, std::uint32_t b) const;
    void NoteSelectionChange(const Selection& before, const Selection& after) const;

    const CWave& sound_;
    const RepaintNotes& notes_;
    bool shown_ = false;
    Rectangle client_;
    ViewGeometry geometry_;
    SelectionEnds selectionEnds_;
    std::uint32_t cursor_ = 0;
    SelectionHistory pastSelections_;
    std::optional<std::uint32_t> chosenMarker_;
    ViewZoom zoom_{sound_, geometry_, selectionEnds_, notes_};
};

}  // namespace sonavel
