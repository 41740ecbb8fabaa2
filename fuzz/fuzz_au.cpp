// Fuzzes the Next/Sun reader.
#include "read_fuzzed.h"
#include "sound/au_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sonavel::ReadFuzzed(data, size, sonavel::ReadAu);
    return 0;
}
