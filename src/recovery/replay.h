// Reads left work back into a document.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "document/sound_doc.h"
#include "platform/outcome.h"

namespace sonavel::recovery {

struct Replay {
    // Why not all of it came back; empty when it did.
    std::string word;
    std::uint64_t goodBytes = 0;  // of the journal: up to the last record that came back
    std::uint32_t recordCount = 0;
    std::uint32_t undoable = 0;  // steps that the records hold
    std::uint32_t redoable = 0;
};

// Into an empty document, which becomes a modified one with the history, the path and the title
// that it had. Ends at the first record that is torn, false or does not fit the sound; fails where
// not even the beginning can be had.
Result<Replay> ReplayInto(CSoundDoc& document, const std::filesystem::path& documentFolder);

// Puts a recording that was under way behind the end of the document's sound, as an edit of its
// own. Done, too, when there was none.
Outcome ReplayTake(CSoundDoc& document, const std::filesystem::path& documentFolder);

}  // namespace sonavel::recovery
