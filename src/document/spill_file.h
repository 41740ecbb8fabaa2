// A file without a name for what there is no memory for: made when it is first needed, gone with
// its last user however the program ends.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <utility>

#include "platform/file_descriptor.h"

namespace sonavel {

class SpillFile {
  public:
    // So much of the disk is left to others.
    static constexpr std::uint64_t kReserveBytes = std::uint64_t{256} << 20;

    // The folder is made when it is needed, for its owner alone; one that belongs to someone else
    // is not used. An empty path stands for none.
    explicit SpillFile(std::filesystem::path folder) : folder_(std::move(folder)) {}

    // Writes behind what is there and says where: byte `at`. False, with nothing kept, when there
    // is no such folder or the disk is nearly full.
    bool Append(std::span<const std::uint8_t> bytes, std::uint64_t& at);
    // False when they cannot be read.
    bool Read(std::uint64_t at, std::span<std::uint8_t> bytes) const;
    // Gives the disk's room back.
    void Release(std::uint64_t at, std::uint64_t bytes);
    std::uint64_t HeldBytes() const { return held_; }

  private:
    bool MakeFolder() const;
    bool Open();
    void CutToEnd();
    bool HasRoomFor(std::uint64_t bytes) const;

    std::filesystem::path folder_;
    FileDescriptor file_;
    std::uint64_t end_ = 0;
    std::uint64_t held_ = 0;
};

// Bytes that lie in such a file, for as long as this lives.
class SpilledBlock {
  public:
    SpilledBlock() = default;
    // Empty when the file cannot take them.
    static SpilledBlock Of(std::span<const std::uint8_t> bytes, std::shared_ptr<SpillFile> file);
    ~SpilledBlock();
    SpilledBlock(SpilledBlock&& other) noexcept = default;
    SpilledBlock& operator=(SpilledBlock&& other) noexcept;

    explicit operator bool() const { return file_ != nullptr; }
    std::uint64_t Size() const { return file_ ? size_ : 0; }
    // As many bytes as were put in.
    bool Read(std::span<std::uint8_t> bytes) const { return file_ && file_->Read(at_, bytes); }

  private:
    std::shared_ptr<SpillFile> file_;
    std::uint64_t at_ = 0;
    std::uint64_t size_ = 0;
};

}  // namespace sonavel
