// A file that the library reads or writes through calls of this program.
#pragma once

#include <sndfile.h>

namespace sonavel {

class VirtualFile {
  public:
    virtual ~VirtualFile();
    VirtualFile(const VirtualFile&) = delete;
    VirtualFile& operator=(const VirtualFile&) = delete;

    // As sf_open; null when the library refuses it. The file must outlive the handle.
    SNDFILE* Open(int mode, SF_INFO& info);

  protected:
    // Takes the descriptor over, which is negative when the file was not opened.
    explicit VirtualFile(int descriptor) : descriptor_(descriptor) {}

    int Descriptor() const { return descriptor_; }
    // Its result as that of close(); once.
    int CloseDescriptor();

  private:
    // In bytes; a negative length or place is a failure, and so are fewer bytes than asked for.
    virtual sf_count_t Length() = 0;
    virtual sf_count_t Seek(sf_count_t offset, int whence) = 0;
    virtual sf_count_t Read(void* to, sf_count_t bytes) = 0;
    virtual sf_count_t Write(const void* from, sf_count_t bytes) = 0;
    virtual sf_count_t Tell() = 0;

    int descriptor_;
};

}  // namespace sonavel
