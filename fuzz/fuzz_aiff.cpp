// Fuzzes the AIFF reader.
#include "read_fuzzed.h"
#include "sound/aiff_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sonavel::ReadFuzzed(data, size, sonavel::ReadAiff);
    return 0;
}
