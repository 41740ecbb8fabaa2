// What the codec program does, one function a subcommand. Each returns the exit status: 0 when the
// work was done, 1 when it was not, and then a failure has been sent.
#pragma once

#include "codec/decode_extent.h"
#include "codec/main/record_pipe.h"

namespace sonavel {

int DecodeFile(const char* path, DecodeExtent extent, RecordOutput& output);
// Sends the responses of a SOFA file of the convention SimpleFreeFieldHRIR.
int ReadResponses(const char* path, RecordOutput& output);
// Takes request, tags and frames from the input and writes over the file at `path`.
int EncodeFile(const char* path, RecordInput& input, RecordOutput& output);

}  // namespace sonavel
