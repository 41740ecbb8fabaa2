// A record of the undo history and where its samples lie: in memory, or in the history's file.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "document/edit_record.h"
#include "document/spill_file.h"

namespace sonavel {

class StoredRecord {
  public:
    StoredRecord() = default;
    StoredRecord(EditRecord record) : record_(std::move(record)) {}

    EditRecord& Record() { return record_; }
    const EditRecord& Record() const { return record_; }
    std::uint64_t MemoryBytes() const { return record_.samples.Size(); }
    std::uint64_t SpilledBytes() const { return spilled_.Size(); }
    // The samples lie in memory, or none are needed.
    bool IsInMemory() const { return !spilled_; }

    // Copies the samples that the record needs from the sound of before, into memory or into the
    // file. False when there is no room.
    bool TakeIntoMemory(const Sound& before) { return TakeSamples(record_, before); }
    bool TakeIntoFile(const Sound& before, const std::shared_ptr<SpillFile>& file);
    // Moves the samples there. False, with them where they are, when that fails.
    bool MoveIntoFile(const std::shared_ptr<SpillFile>& file);
    Outcome MoveIntoMemory();

  private:
    EditRecord record_;
    SpilledBlock spilled_;
};

}  // namespace sonavel
