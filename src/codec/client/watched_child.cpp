#include "codec/client/watched_child.h"

#include <csignal>

#include "codec/client/codec_texts.h"

namespace sonavel {
namespace {

using namespace codec_texts;

// A child that has said its last word has nothing left to do.
constexpr std::chrono::milliseconds kEndsWithin(2000);

std::string_view TextFor(const ChildEnd& end, CodecWork work) {
    const bool decodes = work == CodecWork::kDecoding;
    if (end.how != ChildEnd::How::kCrashed) return decodes ? kDecoderTooLong : kEncoderTooLong;
    // The system ends so whoever has taken the last of its memory.
    if (end.code == SIGKILL) return decodes ? kDecoderMemory : kEncoderMemory;
    return decodes ? kDecoderCrashed : kEncoderCrashed;
}

}  // namespace

bool WatchedChild::MayGoOn() {
    if (!trouble_.IsDone()) return false;
    const Clock::time_point now = Clock::now();
    if (now - lastWatch_ < limits_.slice) return true;
    lastWatch_ = now;
    if (watcher_.Watch() == GoOn::kYes) return true;
    trouble_ = Cancelled();
    child_.Kill();
    return false;
}

bool WatchedChild::NoteTransfer(ChildTransfer::How how) {
    if (how == ChildTransfer::How::kEnd) return false;
    if (how == ChildTransfer::How::kSome) {
        lastSign_ = Clock::now();
    } else if (Clock::now() - lastSign_ >= limits_.silence) {
        trouble_ = Failed(work_ == CodecWork::kDecoding ? kDecoderTooLong : kEncoderTooLong);
        child_.Kill();
        return false;
    }
    return true;
}

std::size_t WatchedChild::Read(std::span<std::uint8_t> to) {
    std::size_t got = 0;
    // The time that this side took since the last call is not the child's.
    lastSign_ = Clock::now();
    while (got < to.size() && MayGoOn()) {
        const ChildTransfer piece = child_.Read(to.subspan(got), limits_.slice);
        if (!NoteTransfer(piece.how)) break;
        got += piece.bytes;
    }
    return got;
}

bool WatchedChild::Write(std::span<const std::uint8_t> from) {
    lastSign_ = Clock::now();
    while (!from.empty() && MayGoOn()) {
        const ChildTransfer piece = child_.Write(from, limits_.slice);
        if (!NoteTransfer(piece.how)) break;
        from = from.subspan(piece.bytes);
    }
    return from.empty();
}

Outcome WatchedChild::End() {
    if (!trouble_.IsDone()) return trouble_;
    const ChildEnd end = child_.Finish(kEndsWithin);
    exitStatus_ = end.code;
    const bool byItself = end.how == ChildEnd::How::kExited || end.how == ChildEnd::How::kUnknown;
    return byItself ? Done() : Failed(TextFor(end, work_));
}

}  // namespace sonavel
