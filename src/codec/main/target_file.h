// The file that an encoder writes. It remembers that a write failed, which not every encoder of the
// library reports.
#pragma once

#include <string>

#include "codec/main/virtual_file.h"

namespace sonavel {

class TargetFile : public VirtualFile {
  public:
    explicit TargetFile(const char* path);

    bool HasFailed() const { return error_ != 0; }
    std::string Reason() const;
    // False when something was not written.
    bool Close();

  private:
    sf_count_t Length() override;
    sf_count_t Seek(sf_count_t offset, int whence) override;
    sf_count_t Read(void* to, sf_count_t bytes) override;
    sf_count_t Write(const void* from, sf_count_t bytes) override;
    sf_count_t Tell() override;

    int error_ = 0;
};

}  // namespace sonavel
