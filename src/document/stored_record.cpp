#include "document/stored_record.h"

#include <utility>

namespace sonavel {

bool StoredRecord::TakeIntoFile(const Sound& before, const std::shared_ptr<SpillFile>& file) {
    if (record_.bytesKept == 0) return true;
    spilled_ = SpilledBlock::Of(before.Bytes().subspan(record_.startByte, record_.bytesKept), file);
    return bool(spilled_);
}

bool StoredRecord::MoveIntoFile(const std::shared_ptr<SpillFile>& file) {
    auto spilled = SpilledBlock::Of(std::as_const(record_.samples).Bytes(), file);
    if (!spilled) return false;
    spilled_ = std::move(spilled);
    record_.samples.FreeBuffer();
    return true;
}

Outcome StoredRecord::MoveIntoMemory() {
    if (IsInMemory()) return Done();
    SoundBuffer samples;
    if (!samples.AllocBuffer(spilled_.Size())) return Failed(failure::kMemory);
    if (!spilled_.Read(samples.Bytes()))
        return spilled_.WasCancelled() ? Cancelled()
                                       : Failed("The undo step cannot be read back from the disk.");
    record_.samples = std::move(samples);
    spilled_ = {};
    return Done();
}

}  // namespace sonavel
