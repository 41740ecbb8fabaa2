#include "codec/client/record_stream.h"

#include "codec/client/codec_texts.h"

namespace sonavel {

using namespace codec_texts;

Outcome RecordStream::Nonsense() {
    child_.Stop();
    return Failed(work_ == CodecWork::kDecoding ? kDecoderNonsense : kEncoderNonsense);
}

Outcome RecordStream::Fetch(std::span<std::uint8_t> to) {
    if (child_.Read(to) == to.size()) return Done();
    const Outcome ended = child_.End();
    return ended.IsDone() ? Nonsense() : ended;
}

Outcome RecordStream::Greet() {
    std::uint8_t greeting[wire::kGreetingBytes];
    if (Outcome fetched = Fetch(greeting); !fetched) return fetched;
    greeted_ = wire::IsGreeting(greeting);
    return greeted_ ? Done() : Nonsense();
}

Result<wire::RecordHead> RecordStream::Next() {
    if (!greeted_)
        if (Outcome greeted = Greet(); !greeted) return greeted;
    std::uint8_t bytes[wire::kRecordHeadBytes];
    if (Outcome fetched = Fetch(bytes); !fetched) return fetched;
    const auto head = wire::ParseHead(bytes);
    if (!head) return Nonsense();
    bytes_ = head->bytes;
    return *head;
}

Outcome RecordStream::TakeContent(std::span<std::uint8_t> room) {
    const bool fits = room.size() == bytes_;
    if (!fits && own_.size() < bytes_) own_.resize(bytes_);
    content_ = fits ? room : std::span(own_).first(bytes_);
    return Fetch(content_);
}

Outcome OutcomeOf(const wire::Failure& failure, CodecWork work) {
    const bool decodes = work == CodecWork::kDecoding;
    switch (failure.code) {
        case wire::FailureCode::kUnreadable:
            return Failed(kUnreadable);
        case wire::FailureCode::kUnknownFormat:
            return Failed(kUnknownFormat);
        case wire::FailureCode::kDamaged:
            return Failed(kDamaged);
        case wire::FailureCode::kMemory:
            return Failed(decodes ? kDecoderMemory : kEncoderMemory);
        case wire::FailureCode::kUnwritable:
            return Failed(kUnwritable);
        case wire::FailureCode::kUnencodable:
            return Failed(kUnencodable);
        case wire::FailureCode::kBadCall:
            break;
    }
    return Failed(decodes ? kDecoderNonsense : kEncoderNonsense);
}

}  // namespace sonavel
