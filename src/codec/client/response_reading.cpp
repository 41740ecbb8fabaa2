#include "codec/client/response_reading.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>
#include <vector>

#include "codec/client/codec_texts.h"
#include "codec/client/record_stream.h"
#include "codec/client/watched_child.h"

namespace sonavel {
namespace {

using wire::RecordType;

constexpr std::string_view kNoResponses = "This is no file of head-related impulse responses.";
constexpr std::string_view kSenseless = "The responses in this file make no sense.";
constexpr std::uint32_t kLowestRate = 8000;
constexpr std::uint32_t kHighestRate = 384000;
constexpr float kLongestDelay = 100000;  // frames

class ResponseReading {
  public:
    explicit ResponseReading(WatchedChild& child)
        : child_(child), stream_(child, CodecWork::kDecoding) {}

    Result<MeasuredResponses> Run(std::string name) {
        Outcome read = ReadAll();
        child_.Stop();
        if (!read) return read;
        MeasuredResponses measured = Sorted();
        measured.name = std::move(name);
        return MakesSense(measured) ? Result<MeasuredResponses>(std::move(measured))
                                    : Failed(kSenseless);
    }

  private:
    Result<RecordType> Next() {
        const Result<wire::RecordHead> head = stream_.Next();
        if (!head) return head.Ended();
        if (Outcome taken = stream_.TakeContent(); !taken) return taken;
        if (head->type != RecordType::kFailure) return head->type;
        const auto failure = wire::ParseFailure(stream_.Content());
        if (!failure) return stream_.Nonsense();
        if (failure->code == wire::FailureCode::kUnknownFormat) return Failed(kNoResponses);
        return OutcomeOf(*failure, CodecWork::kDecoding);
    }

    Outcome ReadAll() {
        const Result<RecordType> first = Next();
        if (!first) return first.Ended();
        const auto head = wire::ParseResponseHead(stream_.Content());
        if (*first != RecordType::kResponseHead || !head) return stream_.Nonsense();
        head_ = *head;
        while (floats_.size() < head_.Floats())
            if (Outcome taken = TakeFloats(); !taken) return taken;
        return Done();
    }

    Outcome TakeFloats() {
        const Result<RecordType> type = Next();
        if (!type) return type.Ended();
        const std::span<const std::uint8_t> bytes = stream_.Content();
        const std::size_t count = bytes.size() / sizeof(float);
        if (*type != RecordType::kFrames || count == 0 || bytes.size() % sizeof(float) != 0 ||
            count > head_.Floats() - floats_.size())
            return stream_.Nonsense();
        floats_.resize(floats_.size() + count);
        std::memcpy(floats_.data() + floats_.size() - count, bytes.data(), bytes.size());
        return Done();
    }

    MeasuredResponses Sorted() const {
        MeasuredResponses measured;
        measured.scale = Scale::kOfItsOwn;
        measured.rate = head_.rate;
        measured.taps = head_.taps;
        for (std::uint32_t i = 0; i < head_.directions; ++i) {
            const float* from = floats_.data() + i * head_.FloatsPerDirection();
            measured.directions.push_back({from[0], from[1], 2 * i, 2 * i + 1});
            measured.delays.insert(measured.delays.end(), {from[2], from[3]});
            const float* taps = from + wire::kFloatsBeforeTaps;
            measured.values.insert(measured.values.end(), taps, taps + std::size_t{2} * head_.taps);
        }
        return measured;
    }

    static bool MakesSense(const MeasuredResponses& measured) {
        if (measured.rate < kLowestRate || measured.rate > kHighestRate) return false;
        for (const MeasuredDirection& direction : measured.directions)
            if (!(std::abs(direction.azimuth) <= 1000) || !(std::abs(direction.elevation) <= 90.1))
                return false;
        for (const double delay : measured.delays)
            if (!(std::abs(delay) <= kLongestDelay)) return false;
        for (std::size_t i = 0; i < measured.Count(); ++i) {
            double energy = 0;
            for (const float tap : measured.Response(i)) energy += double{tap} * tap;
            // Not a number compares false.
            if (!(energy > 1e-12) || !(energy < 1e12)) return false;
        }
        return true;
    }

    WatchedChild& child_;
    RecordStream stream_;
    wire::ResponseHead head_;
    std::vector<float> floats_;
};

}  // namespace

Result<MeasuredResponses> ReadResponsesWithHelper(const CodecSetup& setup,
                                                  const std::filesystem::path& path,
                                                  CodecWatcher& watcher) try {
    ChildCommand command;
    command.program = setup.programs.helper;
    command.arguments = {"responses", path.string()};
    command.memoryBytes = setup.limits.helperMemory;
    std::error_code error;
    const std::uintmax_t bytes = std::filesystem::file_size(path, error);
    command.cpuSeconds = SecondsFor(setup.limits, error ? 0 : bytes);
    WatchedChild child(watcher, setup.limits, CodecWork::kDecoding);
    if (setup.programs.helper.empty() || !child.Start(command))
        return Failed(codec_texts::NeedsProgram("Reading this file", "sonavel-codec"));
    return ResponseReading(child).Run(path.filename().string());
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
