// A file without a name for what there is no memory for: made when it is first needed, gone with
// its last user however the program ends.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <utility>

#include "platform/file_descriptor.h"
#include "platform/progress_window.h"

namespace sonavel {

class SpillFile {
  public:
    // So much of the disk is left to others.
    static constexpr std::uint64_t kReserveBytes = std::uint64_t{256} << 20;

    // The folder is made when it is needed, for its owner alone; one that belongs to someone else
    // is not used. An empty path stands for none.
    // Large blocks are moved beside the calling thread, which shows their progress where there is
    // a factory for it; it lives longer.
    explicit SpillFile(std::filesystem::path folder, ProgressFactory* progress = nullptr)
        : folder_(std::move(folder)), progress_(progress) {}

    // Writes behind what is there and says where: byte `at`. False, with nothing kept, when there
    // is no such folder or the disk is nearly full.
    bool Append(std::span<const std::uint8_t> bytes, std::uint64_t& at);
    // False when they cannot be read.
    bool Read(std::uint64_t at, std::span<std::uint8_t> bytes) const;
    // Whether it was the person who ended the last of these two.
    bool WasCancelled() const { return wasCancelled_; }
    // Gives the disk's room back.
    void Release(std::uint64_t at, std::uint64_t bytes);
    std::uint64_t HeldBytes() const { return held_; }

  private:
    // Moves up to so many bytes of (place in memory, file offset) and returns how many.
    using Mover = std::function<std::int64_t(std::size_t from, std::size_t count, std::int64_t at)>;

    bool MakeFolder() const;
    bool Open();
    void CutToEnd();
    bool HasRoomFor(std::uint64_t bytes) const;
    bool Transfer(std::size_t bytes, std::uint64_t at, const Mover& move) const;

    std::filesystem::path folder_;
    ProgressFactory* progress_;
    mutable bool wasCancelled_ = false;
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
    bool WasCancelled() const { return file_ && file_->WasCancelled(); }

  private:
    std::shared_ptr<SpillFile> file_;
    std::uint64_t at_ = 0;
    std::uint64_t size_ = 0;
};

}  // namespace sonavel
