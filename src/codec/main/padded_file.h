// A file that seems to go on behind its end with zeros. A CAF file that was cut off is refused by
// the library for its data being too short; padded, it is opened for what it holds.
#pragma once

#include "codec/main/virtual_file.h"

namespace sonavel {

class PaddedFile : public VirtualFile {
  public:
    // Whether it is worth trying with this file.
    static bool CanHelp(const char* path);

    explicit PaddedFile(const char* path);

    // How much of the file lies behind the present place, which is that of the first sample when
    // the library has just opened it.
    sf_count_t BytesAhead() const { return position_ < realBytes_ ? realBytes_ - position_ : 0; }

  private:
    sf_count_t Length() override;
    sf_count_t Seek(sf_count_t offset, int whence) override;
    sf_count_t Read(void* to, sf_count_t bytes) override;
    sf_count_t Write(const void* from, sf_count_t bytes) override;
    sf_count_t Tell() override;

    sf_count_t realBytes_ = 0;
    sf_count_t position_ = 0;
};

}  // namespace sonavel
