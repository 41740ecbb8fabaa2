#include "document/edit_record.h"

#include <algorithm>
#include <utility>

namespace sonavel {
namespace {

// Of a sound whose last frame is cut, frames begin up to so many bytes behind their place.
std::uint64_t CutBytes(const Sound& sound) {
    return sound.GetDataSize() % sound.GetBlockAlign();
}

std::uint64_t FirstByteOf(const Sound& sound, std::uint32_t frame) {
    return std::uint64_t{std::min(frame, sound.GetFrameCount())} * sound.GetBlockAlign();
}

void NameBytes(EditRecord& record, const Sound& before, const FrameRange& frames) {
    record.startByte = FirstByteOf(before, frames.start);
    const std::uint64_t end =
        FirstByteOf(before, std::max(frames.start, frames.end)) + CutBytes(before);
    record.bytesKept = std::min(end, before.GetDataSize()) - record.startByte;
}

bool NamesBytesOf(const EditRecord& record, const Sound& sound) {
    const std::uint64_t size = sound.GetDataSize();
    switch (record.reach) {
        case EditReach::kMarkers:
            return record.startByte == 0 && record.bytesThere == 0;
        case EditReach::kFrames:
            return record.startByte <= size && record.bytesThere <= size - record.startByte;
        case EditReach::kEverything:
            return record.startByte == 0 && record.bytesThere == size;
    }
    return false;
}

}  // namespace

EditRecord PlannedRecord(const Sound& before, const EditPlan& plan) {
    EditRecord record;
    record.reach = plan.reach;
    record.format = before.GetFormat();
    record.markers = before.Markers();
    // Without frames there is nothing to name but everything.
    if (record.reach == EditReach::kFrames && before.GetBlockAlign() == 0)
        record.reach = EditReach::kEverything;
    if (record.reach == EditReach::kFrames)
        NameBytes(record, before, plan.frames);
    else if (record.reach == EditReach::kEverything)
        record.bytesKept = before.GetDataSize();
    return record;
}

bool TakeSamples(EditRecord& record, const Sound& before) {
    return record.bytesKept == 0 ||
           record.samples.CopyPiece(BlockOf(before), record.startByte, record.bytesKept);
}

void NoteResult(EditRecord& record, std::uint64_t bytesBefore, const Sound& after) {
    if (record.reach == EditReach::kMarkers) return;
    const std::uint64_t others = bytesBefore - record.bytesKept;
    record.bytesThere = std::max(after.GetDataSize(), others) - others;
}

bool Fits(const EditRecord& record, const Sound& sound) {
    if (!NamesBytesOf(record, sound) || record.samples.Size() != record.bytesKept) return false;
    if (record.reach == EditReach::kMarkers) return record.bytesKept == 0;
    if (record.reach == EditReach::kFrames && !HasSameFrames(record.format, sound.GetFormat()))
        return false;
    const std::uint64_t others = sound.GetDataSize() - record.bytesThere;
    const std::uint64_t most = MostSoundBytes(record.format);
    return others <= most && record.bytesKept <= most - others;
}

Outcome Exchange(EditRecord& record, Sound& sound) {
    if (!Fits(record, sound)) return Failed("The record does not fit the sound.");
    if (record.reach != EditReach::kMarkers) {
        if (!ExchangePiece(sound, record.startByte, record.bytesThere, record.samples,
                           record.format))
            return Failed(failure::kMemory);
        std::swap(record.bytesThere, record.bytesKept);
    }
    std::swap(record.markers, sound.Markers());
    return Done();
}

Result<EditRecord> CounterpartOf(const EditRecord& record, const Sound& sound) {
    if (!NamesBytesOf(record, sound)) return Failed("The record does not fit the sound.");
    EditRecord other{.reach = record.reach,
                     .startByte = record.startByte,
                     .bytesThere = record.bytesKept,
                     .bytesKept = record.bytesThere,
                     .samples = {},
                     .format = sound.GetFormat(),
                     .markers = sound.Markers()};
    if (!TakeSamples(other, sound)) return Failed(failure::kMemory);
    return other;
}

}  // namespace sonavel
