// A file that seems to go on behind its end with zeros. A CAF file that was cut off is refused by
// the library for its data being too short; padded, it is opened for what it holds.
#pragma once

#include <sndfile.h>

namespace sonavel {

class PaddedFile {
  public:
    // Whether it is worth trying with this file.
    static bool CanHelp(const char* path);

    explicit PaddedFile(const char* path);
    ~PaddedFile();
    PaddedFile(const PaddedFile&) = delete;
    PaddedFile& operator=(const PaddedFile&) = delete;

    // For sf_open_virtual, with this object as the user's data.
    SF_VIRTUAL_IO& Callbacks();
    // How much of the file lies behind the present place, which is that of the first sample when
    // the library has just opened it.
    sf_count_t BytesAhead() const { return position_ < realBytes_ ? realBytes_ - position_ : 0; }

  private:
    static sf_count_t Length(void* self);
    static sf_count_t Seek(sf_count_t offset, int whence, void* self);
    static sf_count_t Read(void* to, sf_count_t bytes, void* self);
    static sf_count_t Write(const void* from, sf_count_t bytes, void* self);
    static sf_count_t Tell(void* self);

    int descriptor_ = -1;
    sf_count_t realBytes_ = 0;
    sf_count_t position_ = 0;
};

}  // namespace sonavel
