#include <algorithm>

#include "platform/available_memory.h"
#include "platform/host_services.h"
#include "platform/state_folder.h"

namespace sonavel {

UndoStorage UndoStorage::OfThisSystem() {
    constexpr std::uint64_t kLeast = std::uint64_t{256} << 20;
    return {std::max(AvailableMemory() / 4, kLeast), StateFolder() / "recovery"};
}

}  // namespace sonavel
