#include <mysofa.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <new>
#include <numeric>
#include <vector>

#include "codec/main/commands.h"

namespace sonavel {
namespace {

using wire::FailureCode;
using wire::RecordType;

constexpr unsigned kEars = 2;
constexpr unsigned kCoordinates = 3;

struct Free {
    void operator()(MYSOFA_HRTF* file) const { mysofa_free(file); }
};
using SofaFile = std::unique_ptr<MYSOFA_HRTF, Free>;

bool Holds(const MYSOFA_ARRAY& array, std::uint64_t elements) {
    return array.values != nullptr && array.elements >= elements;
}

// Whether every array is as long as the dimensions say; the library checks some of it.
bool IsWhole(const MYSOFA_HRTF& file) {
    const std::uint64_t measurements = file.M;
    return file.R == kEars && file.C == kCoordinates && measurements > 0 && file.N > 0 &&
           measurements <= wire::kMostDirections && file.N <= wire::kMostTaps &&
           Holds(file.SourcePosition, measurements * kCoordinates) &&
           Holds(file.DataIR, measurements * kEars * file.N) && Holds(file.DataSamplingRate, 1) &&
           (file.DataDelay.elements == 0 || Holds(file.DataDelay, kEars));
}

wire::ResponseHead HeadOf(const MYSOFA_HRTF& file) {
    const float rate = file.DataSamplingRate.values[0];
    wire::ResponseHead head;
    if (rate >= 1 && rate <= static_cast<float>(wire::kMostRate))
        head.rate = static_cast<std::uint32_t>(std::lround(rate));
    head.directions = file.M;
    head.taps = file.N;
    return head;
}

float DelayOf(const MYSOFA_HRTF& file, std::size_t measurement, unsigned ear) {
    if (file.DataDelay.elements == 0) return 0;
    const bool eachItsOwn = file.DataDelay.elements >= std::size_t{file.M} * kEars;
    return file.DataDelay.values[(eachItsOwn ? measurement * kEars : 0) + ear];
}

// Those from farthest away first, so that of several at a direction the farthest is met.
std::vector<std::size_t> FarthestFirst(const MYSOFA_HRTF& file) {
    std::vector<std::size_t> order(file.M);
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto distance = [&](std::size_t i) {
        const float value = file.SourcePosition.values[i * kCoordinates + 2];
        return std::isfinite(value) ? value : 0.0f;
    };
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return distance(a) > distance(b); });
    return order;
}

void AppendMeasurement(const MYSOFA_HRTF& file, std::size_t measurement,
                       std::vector<float>& floats) {
    const float* place = file.SourcePosition.values + measurement * kCoordinates;
    // The file's azimuths run anticlockwise.
    floats.insert(floats.end(), {-place[0], place[1], DelayOf(file, measurement, 0),
                                 DelayOf(file, measurement, 1)});
    const float* taps = file.DataIR.values + measurement * kEars * file.N;
    floats.insert(floats.end(), taps, taps + std::size_t{kEars} * file.N);
}

void SendFloats(const std::vector<float>& floats, RecordOutput& output) {
    output.Send(RecordType::kFrames, {reinterpret_cast<const std::uint8_t*>(floats.data()),
                                      floats.size() * sizeof(float)});
}

void SendAll(const MYSOFA_HRTF& file, RecordOutput& output) {
    const std::size_t most = wire::kMostFrameBytes / sizeof(float);
    std::vector<float> floats;
    for (const std::size_t measurement : FarthestFirst(file)) {
        AppendMeasurement(file, measurement, floats);
        if (floats.size() + wire::kFloatsBeforeTaps + std::size_t{kEars} * file.N <= most) continue;
        SendFloats(floats, output);
        floats.clear();
    }
    if (!floats.empty()) SendFloats(floats, output);
}

int Send(MYSOFA_HRTF& file, RecordOutput& output) {
    if (mysofa_check(&file) != MYSOFA_OK || !IsWhole(file)) {
        output.SendFailure(FailureCode::kUnknownFormat, "no free-field responses of two ears");
        return 1;
    }
    mysofa_tospherical(&file);
    const wire::Bytes head = wire::Pack(HeadOf(file));
    if (!wire::ParseResponseHead(head)) {
        output.SendFailure(FailureCode::kDamaged, "impossible rate or sizes");
        return 1;
    }
    output.Send(RecordType::kResponseHead, head);
    SendAll(file, output);
    output.Send(RecordType::kEnd, wire::Pack(DecodedSound{}));
    return output.IsGood() ? 0 : 1;
}

}  // namespace

int ReadResponses(const char* path, RecordOutput& output) try {
    int error = MYSOFA_OK;
    const SofaFile file(mysofa_load(path, &error));
    if (file) return Send(*file, output);
    output.SendFailure(
        error == MYSOFA_NO_MEMORY ? FailureCode::kMemory : FailureCode::kUnknownFormat, "");
    return 1;
} catch (const std::bad_alloc&) {
    output.SendFailure(FailureCode::kMemory, "");
    return 1;
}

}  // namespace sonavel
