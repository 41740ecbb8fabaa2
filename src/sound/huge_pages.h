// Advice to the system for blocks that are filled from end to end at once.
#pragma once

#include <cstddef>

namespace sonavel {

// In huge pages filling a large block costs a fraction of the page faults. Only advice: where the
// system declines, nothing else changes, and small blocks are left alone.
void AdviseHugePages(void* block, std::size_t bytes);

}  // namespace sonavel
