// The file that an encoder writes. It remembers that a write failed, which not every encoder of the
// library reports.
#pragma once

#include <sndfile.h>

#include <string>

namespace sonavel {

class TargetFile {
  public:
    explicit TargetFile(const char* path);
    ~TargetFile();
    TargetFile(const TargetFile&) = delete;
    TargetFile& operator=(const TargetFile&) = delete;

    // For sf_open_virtual, with this object as the user's data.
    SF_VIRTUAL_IO& Callbacks();

    bool HasFailed() const { return error_ != 0; }
    std::string Reason() const;
    // False when something was not written.
    bool Close();

  private:
    static sf_count_t Length(void* self);
    static sf_count_t Seek(sf_count_t offset, int whence, void* self);
    static sf_count_t Read(void* to, sf_count_t bytes, void* self);
    static sf_count_t Write(const void* from, sf_count_t bytes, void* self);
    static sf_count_t Tell(void* self);

    int descriptor_ = -1;
    int error_ = 0;
};

}  // namespace sonavel
