// The records' contents: each value packed for the other side, and parsed from what it sent. What
// does not parse, or says something impossible, is nothing.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "codec/wire.h"
#include "codec/wire_bytes.h"
#include "sound/codec_values.h"

namespace sonavel::wire {

struct Failure {
    FailureCode code = FailureCode::kDamaged;
    std::string text;  // the library's own words, for a log
};

// Of a listener's responses.
struct ResponseHead {
    std::uint32_t rate = 0;  // frames a second
    std::uint32_t directions = 0;
    std::uint32_t taps = 0;  // of each ear

    std::uint64_t FloatsPerDirection() const { return kFloatsBeforeTaps + std::uint64_t{2} * taps; }
    std::uint64_t Floats() const { return directions * FloatsPerDirection(); }
};

struct RecordHead {
    RecordType type = RecordType::kEnd;
    std::uint32_t bytes = 0;
};

Bytes Greeting();
bool IsGreeting(std::span<const std::uint8_t> bytes);

Bytes Pack(const RecordHead& head);
Bytes Pack(const SoundFileDescription& description);
Bytes Pack(const SoundTag& tag);
Bytes Pack(const SoundChapter& chapter);
Bytes Pack(const DecodedSound& end);
Bytes Pack(const Failure& failure);
Bytes Pack(const ResponseHead& head);
Bytes Pack(const EncodeRequest& request);  // without its tags, which are records of their own

// Nothing for a type that does not exist or a length beyond the type's limit.
std::optional<RecordHead> ParseHead(std::span<const std::uint8_t> bytes);
std::optional<SoundFileDescription> ParseDescription(std::span<const std::uint8_t> bytes);
std::optional<SoundTag> ParseTag(std::span<const std::uint8_t> bytes);
std::optional<SoundChapter> ParseChapter(std::span<const std::uint8_t> bytes);
std::optional<DecodedSound> ParseEnd(std::span<const std::uint8_t> bytes);
std::optional<Failure> ParseFailure(std::span<const std::uint8_t> bytes);
// Nothing beyond the limits of responses, too.
std::optional<ResponseHead> ParseResponseHead(std::span<const std::uint8_t> bytes);
std::optional<EncodeRequest> ParseRequest(std::span<const std::uint8_t> bytes);

}  // namespace sonavel::wire
