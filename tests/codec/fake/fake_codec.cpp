// A codec program that goes wrong in the way that the file names which it is to decode: its first
// line is one of the words below.
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <initializer_list>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "codec/wire_values.h"

namespace sonavel {
namespace {

using wire::RecordType;

void Write(const wire::Bytes& bytes) {
    if (write(STDOUT_FILENO, bytes.data(), bytes.size()) < 0) _exit(3);
}

void Send(RecordType type, const wire::Bytes& content) {
    Write(wire::Pack(wire::RecordHead{type, static_cast<std::uint32_t>(content.size())}));
    Write(content);
}

void SendHead(std::uint64_t frames) {
    SoundFileDescription description;
    description.format = "Fake";
    description.rate = 8000;
    description.channels = 2;
    description.samples = FrameSamples::kSigned16;
    description.counted = frames > 0 ? FrameCount::kStated : FrameCount::kUnknown;
    description.frames = frames;
    Write(wire::Greeting());
    Send(RecordType::kDescription, wire::Pack(description));
}

void SendEnd(std::uint64_t frames) {
    DecodedSound end;
    end.frames = frames;
    Send(RecordType::kEnd, wire::Pack(end));
}

[[noreturn]] void SendForever(RecordType type, const wire::Bytes& content) {
    for (;;) Send(type, content);
}

void Hang() {
    for (;;) pause();
}

wire::Bytes Floats(std::initializer_list<float> values) {
    const auto* first = reinterpret_cast<const std::uint8_t*>(values.begin());
    return {first, first + values.size() * sizeof(float)};
}

// Of one direction and one tap.
void SendResponseHead(std::uint32_t rate = 44100) {
    Write(wire::Greeting());
    Send(RecordType::kResponseHead, wire::Pack(wire::ResponseHead{rate, 1, 1}));
}

const std::map<std::string, std::function<void()>> kFaults = {
    {"good responses",
     [] {
         SendResponseHead(), Send(RecordType::kFrames, Floats({90, 0, 1, 2, 0.5f, 0.25f}));
     }},
    {"too many responses",
     [] {
         SendResponseHead(), Send(RecordType::kFrames, Floats({0, 0, 0, 0, 1, 1, 1}));
     }},
    {"torn responses", [] { SendResponseHead(), Send(RecordType::kFrames, wire::Bytes(3)); }},
    {"empty responses",
     [] { SendResponseHead(), SendForever(RecordType::kFrames, wire::Bytes()); }},
    {"responses without a head",
     [] {
         Write(wire::Greeting());
         Send(RecordType::kFrames, Floats({0, 0, 0, 0, 1, 1}));
     }},
    {"responses at no rate", [] { SendResponseHead(0); }},
    {"responses at a rate of their own",
     [] {
         SendResponseHead(100), Send(RecordType::kFrames, Floats({0, 0, 0, 0, 1, 1}));
     }},
    {"responses that are no numbers",
     [] {
         SendResponseHead();
         Send(RecordType::kFrames,
              Floats({0, 0, 0, 0, std::numeric_limits<float>::quiet_NaN(), 1}));
     }},
    {"responses from nowhere",
     [] {
         SendResponseHead(), Send(RecordType::kFrames, Floats({0, 91, 0, 0, 1, 1}));
     }},
    {"silent responses",
     [] {
         SendResponseHead(), Send(RecordType::kFrames, Floats({0, 0, 0, 0, 1, 0}));
     }},
    {"good", [] { SendHead(2), Send(RecordType::kFrames, wire::Bytes(8)), SendEnd(2); }},
    {"silent exit", [] {}},
    {"crash",
     [] {
         SendHead(2);
         Send(RecordType::kFrames, wire::Bytes(4));
         std::signal(SIGSEGV, SIG_DFL);  // a sanitizer would turn it into an exit
         std::raise(SIGSEGV);
     }},
    {"killed", [] { std::raise(SIGKILL); }},
    {"hang", [] { Hang(); }},
    {"hang after head", [] { SendHead(2), Hang(); }},
    {"hang after end",
     [] { SendHead(2), Send(RecordType::kFrames, wire::Bytes(8)), SendEnd(2), Hang(); }},
    {"exit after head", [] { SendHead(2); }},
    {"exit in a record",
     [] {
         SendHead(9), Write(wire::Pack(wire::RecordHead{RecordType::kFrames, 16})), Write({1, 2});
     }},
    {"compute forever",
     [] {
         SendHead(2);
         while (getpid() != 0) {
         }
     }},
    {"no greeting", [] { Send(RecordType::kEnd, wire::Pack(DecodedSound{})); }},
    {"another version", [] { Write(wire::Packer().U32(wire::kMagic).U32(99).Done()); }},
    {"no description", [] { Write(wire::Greeting()), SendEnd(0); }},
    {"frames first", [] { Write(wire::Greeting()), Send(RecordType::kFrames, wire::Bytes(8)); }},
    {"two descriptions", [] { SendHead(2), SendHead(2); }},
    {"unknown record", [] { SendHead(2), Send(static_cast<RecordType>(99), {}); }},
    {"long record", [] { SendHead(2), Write(wire::Packer().U32(2).U32(0xFFFFFFFF).Done()); }},
    {"torn frame", [] { SendHead(2), Send(RecordType::kFrames, wire::Bytes(7)); }},
    {"empty frames forever", [] { SendHead(0), SendForever(RecordType::kFrames, {}); }},
    {"more frames than stated",
     [] { SendHead(2), SendForever(RecordType::kFrames, wire::Bytes(8)); }},
    {"another count at the end",
     [] { SendHead(2), Send(RecordType::kFrames, wire::Bytes(8)), SendEnd(1); }},
    {"flood of frames", [] { SendHead(0), SendForever(RecordType::kFrames, wire::Bytes(65536)); }},
    {"flood of tags",
     [] {
         SendHead(2),
             SendForever(RecordType::kTag, wire::Pack(SoundTag{"k", std::string(1 << 20, 'v')}));
     }},
    {"flood of small tags",
     [] { SendHead(2), SendForever(RecordType::kTag, wire::Pack(SoundTag{})); }},
    {"flood of chapters",
     [] { SendHead(2), SendForever(RecordType::kChapter, wire::Pack(SoundChapter{})); }},
    {"tag behind frames",
     [] {
         SendHead(9), Send(RecordType::kFrames, wire::Bytes(8)),
             Send(RecordType::kTag, wire::Pack(SoundTag{}));
     }},
    {"flood of errors",
     [] {
         const std::vector<char> noise(65536, 'e');
         for (;;)
             if (write(STDERR_FILENO, noise.data(), noise.size()) < 0) return;
     }},
    {"no memory",
     [] {
         Write(wire::Greeting());
         Send(RecordType::kFailure, wire::Pack(wire::Failure{wire::FailureCode::kMemory, "%s%n"}));
     }},
    {"unknown format",
     [] {
         Write(wire::Greeting());
         Send(RecordType::kFailure,
              wire::Pack(wire::Failure{wire::FailureCode::kUnknownFormat, ""}));
     }},
};

}  // namespace
}  // namespace sonavel

int main(int count, char** words) {
    if (count < 3) return 2;
    std::string word;
    std::getline(std::ifstream(words[2]), word);
    const auto fault = sonavel::kFaults.find(std::string(words[1]) == "encode" ? "crash" : word);
    if (fault == sonavel::kFaults.end()) return 2;
    fault->second();
    return 0;
}
