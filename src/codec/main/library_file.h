// A file that the sound library reads.
#pragma once

#include <sndfile.h>

#include <memory>
#include <string>

#include "codec/main/padded_file.h"
#include "codec/wire_values.h"
#include "sound/codec_values.h"

namespace sonavel {

struct CloseLibraryFile {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using LibraryHandle = std::unique_ptr<SNDFILE, CloseLibraryFile>;

struct LibraryFile {
    std::unique_ptr<PaddedFile> padded;  // what the handle reads from, where it had to be
    LibraryHandle handle;
    SF_INFO info{};
    std::uint64_t promisedFrames = 0;  // by a head whose frames are not all there, else 0
    wire::Failure failure;             // why there is no handle
};

// The path must lead to a regular file; its name's extension helps where the content says nothing.
LibraryFile OpenLibraryFile(const char* path);

SoundFileDescription DescribeFile(const LibraryFile& file);
std::vector<SoundTag> TagsOf(const LibraryFile& file);
// The cue points that the library gives.
std::vector<SoundChapter> ChaptersOf(const LibraryFile& file);

// The frames that the head promises where the file ends before they do, as far as the library
// notices that on opening; else 0. To be asked before frames are read.
std::uint64_t PromisedFrames(const LibraryFile& file);
// True for a stream whose last page, which tells its length, is not there.
bool LacksItsEnd(const LibraryFile& file);

}  // namespace sonavel
