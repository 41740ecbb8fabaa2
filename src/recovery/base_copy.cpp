#include "recovery/base_copy.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <utility>

namespace sonavel::recovery {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kPieceBytes = std::uint64_t{4} << 20;
constexpr std::size_t kBlockBytes = std::size_t{1} << 16;
constexpr const char* kPartName = "base.part";

class BaseCopy {
  public:
    BaseCopy(std::shared_ptr<JournalFile> journal, FileOrigin origin)
        : journal_(std::move(journal)), origin_(std::move(origin)) {}

    JournalThread::Piece Go() {
        if (journal_->IsRemoved()) return JournalThread::Piece::kDone;
        if (!from_.IsOpen() && !Begin()) return GiveUp();
        if (copied_ < origin_.identity.sizeBytes) {
            if (!CopyPiece()) return GiveUp();
            return JournalThread::Piece::kMoreToDo;
        }
        return End() ? JournalThread::Piece::kDone : GiveUp();
    }

  private:
    bool IsSameFile() const { return IdentityOfFile(from_.Get()) == origin_.identity; }
    fs::path PartPath() const { return journal_->Folder() / kPartName; }

    bool Begin() {
        from_ = FileDescriptor(open(origin_.path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        if (!from_.IsOpen() || !IsSameFile()) return false;
        if (!journal_->TakeRoom(origin_.identity.sizeBytes)) return false;
        to_ = FileDescriptor(
            open(PartPath().c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (!to_.IsOpen()) return false;
        if (ioctl(to_.Get(), FICLONE, from_.Get()) == 0) copied_ = origin_.identity.sizeBytes;
        return true;
    }

    bool CopyPiece() {
        const std::uint64_t end = std::min(copied_ + kPieceBytes, origin_.identity.sizeBytes);
        while (copied_ < end)
            if (!CopyBlock(end)) return false;
        return true;
    }

    bool CopyBlock(std::uint64_t end) {
        std::array<char, kBlockBytes> block;
        const std::size_t wanted = std::min<std::uint64_t>(end - copied_, block.size());
        const ssize_t got = pread(from_.Get(), block.data(), wanted, static_cast<off_t>(copied_));
        if (got < 0 && errno == EINTR) return true;
        if (got <= 0) return false;
        const ssize_t put = write(to_.Get(), block.data(), static_cast<std::size_t>(got));
        if (put != got) return false;
        copied_ += static_cast<std::uint64_t>(got);
        return true;
    }

    // A file that was written meanwhile may be a mixture.
    bool End() {
        if (!IsSameFile() || fdatasync(to_.Get()) != 0) return false;
        const fs::path path = BaseCopyPath(journal_->Folder(), origin_.path);
        return rename(PartPath().c_str(), path.c_str()) == 0;
    }

    JournalThread::Piece GiveUp() {
        if (to_.IsOpen()) unlink(PartPath().c_str());
        return JournalThread::Piece::kDone;
    }

    std::shared_ptr<JournalFile> journal_;
    FileOrigin origin_;
    FileDescriptor from_;
    FileDescriptor to_;
    std::uint64_t copied_ = 0;
};

}  // namespace

fs::path BaseCopyPath(const fs::path& folder, const fs::path& file) {
    fs::path path = folder / "base";
    path += file.extension();
    return path;
}

JournalThread::LongJob CopyingBase(std::shared_ptr<JournalFile> journal, const FileOrigin& origin) {
    auto copy = std::make_shared<BaseCopy>(std::move(journal), origin);
    return [copy] { return copy->Go(); };
}

}  // namespace sonavel::recovery
