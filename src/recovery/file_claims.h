// Which files the documents of running editors show, so that a second editor can say so. A claim is
// a lock on a small file beside the records, never on the sound's own file.
#pragma once

#include <filesystem>
#include <map>

#include "platform/file_descriptor.h"

namespace sonavel::recovery {

class FileClaims {
  public:
    // The locks lie in this folder, which is made.
    explicit FileClaims(std::filesystem::path folder) : folder_(std::move(folder)) {}
    ~FileClaims();
    FileClaims(const FileClaims&) = delete;
    FileClaims& operator=(const FileClaims&) = delete;

    // False when another program has the file. Claims of one file are counted.
    bool Claim(const std::filesystem::path& file);
    void Release(const std::filesystem::path& file);

  private:
    struct Held {
        FileDescriptor lock;
        int count = 0;
    };

    std::filesystem::path LockPath(const std::filesystem::path& file) const;

    std::filesystem::path folder_;
    std::map<std::filesystem::path, Held> held_;
};

}  // namespace sonavel::recovery
