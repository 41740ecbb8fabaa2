#include "codec/client/ffmpeg_decoding.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <vector>

#include "codec/client/codec_texts.h"
#include "codec/client/foreign_formats.h"
#include "codec/client/probe_report.h"
#include "codec/client/watched_child.h"
#include "codec/client/wav_stream.h"
#include "codec/float_scrub.h"
#include "codec/wire.h"

namespace sonavel {
namespace {

using namespace codec_texts;

constexpr std::size_t kPieceBytes = std::size_t{256} << 10;
constexpr std::size_t kMostReportBytes = kMostTagBytesOfFile + (std::size_t{8} << 20);

// Reads the one file that it is given: playlists and such that lead to others are none of the
// formats, and no other protocol is spoken.
void AddInput(const std::filesystem::path& path, std::vector<std::string>& arguments) {
    arguments.insert(arguments.end(),
                     {"-protocol_whitelist", "file", "-format_whitelist",
                      std::string(kAllowedDemuxers), "-i", "file:" + path.string()});
}

ChildCommand ProbeCommand(const CodecSetup& setup, const std::filesystem::path& path) {
    ChildCommand command;
    command.program = setup.programs.ffprobe;
    static constexpr char kEntries[] =
        "stream=codec_name,sample_fmt,sample_rate,channels,bits_per_raw_sample,"
        "duration:stream_tags:format=duration:format_tags:"
        "chapter=start_time,end_time:chapter_tags";
    command.arguments = {"-hide_banner",    "-loglevel", "error",
                         "-select_streams", "a:0",       "-show_entries",
                         kEntries,          "-of",       "flat"};
    AddInput(path, command.arguments);
    return command;
}

ChildCommand DecodeCommand(const CodecSetup& setup, const std::filesystem::path& path,
                           FrameSamples samples) {
    constexpr const char* kCodings[] = {"pcm_u8", "pcm_s16le", "pcm_f32le"};
    ChildCommand command;
    command.program = setup.programs.ffmpeg;
    command.arguments = {"-nostdin", "-hide_banner", "-loglevel", "error"};
    AddInput(path, command.arguments);
    for (const char* word : {"-map", "0:a:0", "-map_metadata", "-1", "-fflags", "+bitexact", "-f",
                             "wav", "-c:a", kCodings[static_cast<std::size_t>(samples)], "pipe:1"})
        command.arguments.emplace_back(word);
    return command;
}

void Limit(const CodecSetup& setup, const std::filesystem::path& path, ChildCommand& command) {
    command.memoryBytes = setup.limits.ffmpegMemory;
    std::error_code error;
    const std::uintmax_t bytes = std::filesystem::file_size(path, error);
    command.cpuSeconds = SecondsFor(setup.limits, error ? 0 : bytes);
}

// In which samples the sound comes without loss, and how the file keeps them.
void DescribeSamples(const ProbeReport& report, SoundFileDescription& description) {
    if (!IsLossless(report.coding)) return;
    const std::string_view format = report.sampleFormat;
    const bool isFloat = format.starts_with("flt") || format.starts_with("dbl");
    description.depth = isFloat ? FileDepth::kFloat : FileDepth::kInteger;
    if (format.starts_with("u8")) {
        description.samples = FrameSamples::kUnsigned8;
        description.bits = 8;
    } else if (format.starts_with("s16")) {
        description.samples = FrameSamples::kSigned16;
        description.bits = 16;
    } else {
        description.bits = format.starts_with("dbl") ? 64 : 32;
    }
    if (report.bits > 0 && report.bits < description.bits) description.bits = report.bits;
}

class FfmpegDecoding {
  public:
    FfmpegDecoding(const CodecSetup& setup, const std::filesystem::path& path, FrameSink& sink)
        : setup_(setup), path_(path), sink_(sink) {}

    Result<DecodedSound> Run(DecodeExtent extent) {
        head_.description.format = ForeignFormatName(path_);
        if (head_.description.format.empty()) head_.description.format = "Sound";
        if (Outcome probed = Probe(); !probed) return probed;
        if (extent == DecodeExtent::kHeadAlone && head_.description.rate > 0) {
            if (Outcome begun = sink_.Begin(head_); !begun) return begun;
            return DecodedSound{};
        }
        return Decode(extent);
    }

  private:
    // Fills the head as far as ffprobe is there.
    Outcome Probe() {
        if (setup_.programs.ffprobe.empty()) return Done();
        WatchedChild child(sink_, setup_.limits, CodecWork::kDecoding);
        ChildCommand command = ProbeCommand(setup_, path_);
        Limit(setup_, path_, command);
        if (!child.Start(command)) return Done();
        std::string lines(kMostReportBytes, '\0');
        lines.resize(child.Read({reinterpret_cast<std::uint8_t*>(lines.data()), lines.size()}));
        if (lines.size() == kMostReportBytes) child.Stop();
        if (Outcome ended = child.End(); !ended && ended.IsCancelled()) return ended;
        if (auto report = ParseProbeReport(lines)) Describe(std::move(*report));
        return Done();
    }

    void Describe(ProbeReport report) {
        SoundFileDescription& description = head_.description;
        description.coding = CodingName(report.coding);
        if (description.coding == description.format) description.coding.clear();
        DescribeSamples(report, description);
        if (report.rate <= wire::kMostRate && report.channels > 0 &&
            report.channels <= wire::kMostChannels) {
            description.rate = report.rate;
            description.channels = report.channels;
        }
        if (report.seconds > 0 && description.rate > 0) {
            description.counted = FrameCount::kEstimated;
            description.frames =
                static_cast<std::uint64_t>(std::llround(report.seconds * description.rate));
        }
        head_.tags = std::move(report.tags);
        head_.chapters = std::move(report.chapters);
    }

    Result<DecodedSound> Decode(DecodeExtent extent) {
        WatchedChild child(sink_, setup_.limits, CodecWork::kDecoding);
        ChildCommand command = DecodeCommand(setup_, path_, head_.description.samples);
        Limit(setup_, path_, command);
        if (!child.Start(command)) return Failed(NeedsProgram("Reading this file", "ffmpeg"));
        const auto head = ReadWavStreamHead(
            [&child](std::span<std::uint8_t> to) { return child.Read(to) == to.size(); });
        if (!head) return WhyNothingCame(child);
        if (head->samples != head_.description.samples) return Failed(kDecoderNonsense);
        head_.description.rate = head->rate;
        head_.description.channels = head->channels;
        head_.description.speakers = SpeakersOfMask(head->channelMask, head->channels);
        if (Outcome begun = sink_.Begin(head_); !begun) return begun;
        if (extent == DecodeExtent::kHeadAlone) return DecodedSound{};
        return TakeFrames(child);
    }

    static Outcome WhyNothingCame(WatchedChild& child) {
        if (Outcome ended = child.End(); !ended) return ended;
        if (child.ErrorText().find("Cannot allocate memory") != std::string::npos)
            return Failed(kDecoderMemory);
        return Failed(kUnknownFormat);
    }

    Result<DecodedSound> TakeFrames(WatchedChild& child) {
        DecodedSound sound;
        for (bool more = true; more;)
            if (Outcome taken = TakePiece(child, sound, more); !taken) return taken;
        if (Outcome ended = child.End(); !ended) return ended;
        if (child.ExitStatus() != 0 || !child.ErrorText().empty())
            sound.condition = SoundCondition::kDamaged;
        return sound;
    }

    Outcome TakePiece(WatchedChild& child, DecodedSound& sound, bool& more) {
        const std::size_t frameBytes = head_.description.BytesPerFrame();
        const std::size_t wanted = std::max<std::size_t>(1, kPieceBytes / frameBytes) * frameBytes;
        std::span<std::uint8_t> room = sink_.Room(wanted);
        if (room.size() != wanted) {
            own_.resize(wanted);
            room = own_;
        }
        const std::size_t got = child.Read(room);
        more = got == wanted;
        const auto bytes = room.first(got - got % frameBytes);
        if (bytes.empty()) return Done();
        if (head_.description.samples == FrameSamples::kFloat32)
            sound.silencedSamples += SilenceNonFinite(
                {reinterpret_cast<float*>(bytes.data()), bytes.size() / sizeof(float)});
        sound.frames += bytes.size() / frameBytes;
        return sink_.Take(bytes);
    }

    const CodecSetup& setup_;
    const std::filesystem::path& path_;
    FrameSink& sink_;
    SoundFileHead head_;
    std::vector<std::uint8_t> own_;
};

}  // namespace

Result<DecodedSound> DecodeWithFfmpeg(const CodecSetup& setup, const std::filesystem::path& path,
                                      DecodeExtent extent, FrameSink& sink) try {
    return FfmpegDecoding(setup, path, sink).Run(extent);
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
