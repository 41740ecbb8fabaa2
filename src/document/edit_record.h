// What an edit replaced in a sound, as a plain value: exchanged with the sound it gives the state
// before back and keeps the one after, exchanged again it does the opposite, byte for byte. The
// undo history is made of such records, and whatever writes them down has all it needs.
//
// Both states are equal outside the bytes that the record names; what a record and the sound have
// in common is therefore held once, in the sound. Records of a row of edits hold one after the
// other: each is exchanged with the very state that it was made in, or came out of.
#pragma once

#include <cstdint>

#include "platform/outcome.h"
#include "sound/frame_range.h"
#include "sound/sound.h"

namespace sonavel {

// How much of a sound an edit replaces.
enum class EditReach : std::uint8_t {
    kMarkers,     // the markers, nothing else
    kFrames,      // a run of frames, the format's numbers, and the markers
    kEverything,  // all samples, the format and the markers
};

struct EditRecord {
    EditReach reach = EditReach::kFrames;
    // kFrames: `bytesThere` bytes of the sound from `startByte` on stand where the other state has
    // `bytesKept`. kEverything: from 0 all that either has. kMarkers: 0.
    std::uint64_t startByte = 0;
    std::uint64_t bytesThere = 0;
    std::uint64_t bytesKept = 0;
    // Of the state that the sound does not show: its `bytesKept` bytes, or none while they lie
    // elsewhere or nobody needs them; its format (not kMarkers), and all its markers.
    SoundBuffer samples = {};
    PcmFormat format = {};
    MarkerList markers = {};
};

// What an edit is about to replace. An insertion replaces the empty range at its frame.
struct EditPlan {
    EditReach reach = EditReach::kEverything;
    FrameRange frames;  // kFrames; frames behind the sound's end are those of its end
};
constexpr EditPlan ReplacesFrames(std::uint32_t start, std::uint32_t end) {
    return {EditReach::kFrames, {start, end}};
}
constexpr EditPlan InsertsAt(std::uint32_t frame) {
    return ReplacesFrames(frame, frame);
}
// The rate or another number of the format, and no sample.
constexpr EditPlan ReplacesFormat() {
    return InsertsAt(0);
}
constexpr EditPlan ReplacesEverything() {
    return {};
}

// The record of what is about to be replaced, without its samples. A last frame that is cut counts
// to whatever touches the end of the sound.
EditRecord PlannedRecord(const Sound& before, const EditPlan& plan);
// Copies the samples that it needs from the sound, which has not changed since it was planned.
// False when the memory cannot be had.
bool TakeSamples(EditRecord& record, const Sound& before);
// Behind the edit: notes how many bytes stand there now. `bytesBefore`: of the whole sound.
void NoteResult(EditRecord& record, std::uint64_t bytesBefore, const Sound& after);

// Whether the record can be exchanged with this sound: it names bytes that are there, keeps what it
// says, and makes a sound that can be held. Records from a file may be anything.
bool Fits(const EditRecord& record, const Sound& sound);
// Puts the record's state into the sound and the sound's into the record. On failure, for want of
// memory or where the record does not fit, both are as they were.
Outcome Exchange(EditRecord& record, Sound& sound);
// A copy of what Exchange() would leave in the record: of an edit that has come about, what it
// made. Fails when the memory cannot be had or the record does not fit.
Result<EditRecord> CounterpartOf(const EditRecord& record, const Sound& sound);

}  // namespace sonavel
