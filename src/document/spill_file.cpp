#include "document/spill_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <system_error>
#include <utility>

#include "platform/beside.h"

namespace sonavel {
namespace {

// More at once is no faster, and a cancel is to be noticed soon.
constexpr std::size_t kMostAtOnce = std::size_t{8} << 20;
// Less is done before a window could be read.
constexpr std::size_t kBesideFromBytes = std::size_t{16} << 20;

template <class Mover>
bool MoveAll(std::size_t bytes, std::uint64_t at, const Mover& move, const PieceWatch& watch) {
    for (std::size_t done = 0; done < bytes;) {
        if (watch(static_cast<double>(done) / static_cast<double>(bytes)) == Onward::kStop)
            return false;
        const std::int64_t count =
            move(done, std::min(bytes - done, kMostAtOnce), static_cast<std::int64_t>(at + done));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
}

FileDescriptor OpenNamelessIn(const std::filesystem::path& folder) {
    FileDescriptor file(open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (file.IsOpen()) return file;
    // Not every file system makes files without a name.
    std::string name = (folder / "undo-XXXXXX").string();
    file = FileDescriptor(mkostemp(name.data(), O_CLOEXEC));
    if (file.IsOpen()) unlink(name.c_str());
    return file;
}

}  // namespace

bool SpillFile::MakeFolder() const {
    if (folder_.empty()) return false;
    std::error_code ignored;
    std::filesystem::create_directories(folder_.parent_path(), ignored);
    mkdir(folder_.c_str(), S_IRWXU);
    struct stat folder {};
    return stat(folder_.c_str(), &folder) == 0 && S_ISDIR(folder.st_mode) &&
           folder.st_uid == geteuid();
}

bool SpillFile::Open() {
    if (!file_.IsOpen() && MakeFolder()) file_ = OpenNamelessIn(folder_);
    return file_.IsOpen();
}

bool SpillFile::HasRoomFor(std::uint64_t bytes) const {
    struct statvfs disk {};
    if (fstatvfs(file_.Get(), &disk) != 0) return false;
    const std::uint64_t free = std::uint64_t{disk.f_bavail} * disk.f_frsize;
    return free >= kReserveBytes && free - kReserveBytes >= bytes;
}

bool SpillFile::Transfer(std::size_t bytes, std::uint64_t at, const Mover& move) const {
    wasCancelled_ = false;
    bool moved = false;
    const auto work = [&](const PieceWatch& watch) { moved = MoveAll(bytes, at, move, watch); };
    if (!progress_ || bytes < kBesideFromBytes) {
        work(Unwatched);
        return moved;
    }
    const auto window = progress_->CreateProgress("Progress Undo");
    // One that was cancelled too late has come about.
    wasCancelled_ = !DoWatchedBeside(*window, work) && !moved;
    return moved;
}

bool SpillFile::Append(std::span<const std::uint8_t> bytes, std::uint64_t& at) {
    wasCancelled_ = false;
    if (!Open() || !HasRoomFor(bytes.size())) return false;
    const bool written =
        Transfer(bytes.size(), end_, [&](std::size_t from, std::size_t count, std::int64_t to) {
            return pwrite(file_.Get(), bytes.data() + from, count, to);
        });
    if (!written) {
        CutToEnd();
        return false;
    }
    at = std::exchange(end_, end_ + bytes.size());
    held_ += bytes.size();
    return true;
}

bool SpillFile::Read(std::uint64_t at, std::span<std::uint8_t> bytes) const {
    return Transfer(bytes.size(), at, [&](std::size_t to, std::size_t count, std::int64_t from) {
        return pread(file_.Get(), bytes.data() + to, count, from);
    });
}

void SpillFile::Release(std::uint64_t at, std::uint64_t bytes) {
    held_ -= bytes;
    if (held_ > 0 && at + bytes < end_) {
        // Where the file system cannot, the room comes back with the end of the file.
        fallocate(file_.Get(), FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, static_cast<off_t>(at),
                  static_cast<off_t>(bytes));
        return;
    }
    end_ = held_ > 0 ? at : 0;
    CutToEnd();
}

void SpillFile::CutToEnd() {
    // Bytes behind the end cost room on the disk, no more.
    [[maybe_unused]] const int cut = ftruncate(file_.Get(), static_cast<off_t>(end_));
}

SpilledBlock SpilledBlock::Of(std::span<const std::uint8_t> bytes,
                              std::shared_ptr<SpillFile> file) {
    SpilledBlock spilled;
    if (!file || !file->Append(bytes, spilled.at_)) return {};
    spilled.size_ = bytes.size();
    spilled.file_ = std::move(file);
    return spilled;
}

SpilledBlock::~SpilledBlock() {
    if (file_) file_->Release(at_, size_);
}

SpilledBlock& SpilledBlock::operator=(SpilledBlock&& other) noexcept {
    std::swap(file_, other.file_);
    std::swap(at_, other.at_);
    std::swap(size_, other.size_);
    return *this;
}

}  // namespace sonavel
