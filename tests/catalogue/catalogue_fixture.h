// A catalogue, a folder with sound files, and what probing them needs.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "catalogue/catalogue_rows.h"
#include "catalogue/catalogue_store.h"
#include "catalogue/sample_files.h"
#include "platform/headless/headless_progress.h"
#include "platform/headless/silent_prompts.h"
#include "support/sound_files.h"

namespace sonavel {

// Knows files that begin with "fLaC", each of eight frames of 24 bits, and hangs over those that
// begin with "hang" until the watcher has enough.
class FlacAlone : public SoundCodecs {
  public:
    Result<SoundFileHead> Probe(const std::filesystem::path& path,
                                CodecWatcher& watcher) const override {
        const FileBytes start = ReadFileBytes(path);
        if (start == BytesOf("hang")) {
            while (watcher.Watch() == GoOn::kYes) std::this_thread::sleep_for(kSlice);
            return Cancelled();
        }
        if (start != BytesOf("fLaC")) return Failed("The format of this file is not known.");
        SoundFileHead head;
        SoundFileDescription& flac = head.description;
        flac.format = "FLAC";
        flac.depth = FileDepth::kInteger;
        flac.bits = 24;
        flac.rate = 96000;
        flac.channels = 2;
        flac.counted = FrameCount::kStated;
        flac.frames = 8;
        return head;
    }
    Result<DecodedSound> Decode(const std::filesystem::path& path, FrameSink& sink) const override {
        const Result<SoundFileHead> head = Probe(path, sink);
        if (!head) return head.Ended();
        if (Outcome begun = sink.Begin(*head); !begun) return begun;
        const FileBytes frames(head->description.frames * head->description.BytesPerFrame());
        if (Outcome taken = sink.Take(frames); !taken) return taken;
        return DecodedSound{.frames = head->description.frames};
    }
    Outcome Encode(const std::filesystem::path&, const EncodeRequest&,
                   FrameSource&) const override {
        return Failed("No encoder.");
    }
    bool CanDecodeWithFfmpeg() const override { return false; }

  private:
    static constexpr std::chrono::milliseconds kSlice{5};
};

class CatalogueFixture : public ::testing::Test {
  protected:
    std::filesystem::path WriteWav(std::string_view name, std::size_t frames) {
        WavParts parts;
        parts.data = FileBytes(frames * 2);
        const std::filesystem::path path = folder / name;
        std::filesystem::create_directories(path.parent_path());
        WriteFileBytes(path, WavBytes(parts));
        return path;
    }
    // Entries of files that do not exist, in /s.
    void AddNames(const std::vector<std::string>& names) {
        for (const std::string& name : names) ASSERT_TRUE(catalogue.Add({"/s/" + name, {}}));
    }
    AddedSamples Add(const std::vector<std::filesystem::path>& paths) {
        return AddSamples(catalogue, paths, &codecs, progress);
    }
    static std::vector<std::string> NamesOf(const Catalogue& shown, const CatalogueRows& rows) {
        std::vector<std::string> names;
        for (const std::uint32_t entry : rows.Entries())
            names.emplace_back(shown.At(entry).FileName());
        return names;
    }

    TemporaryFolder folder;
    FlacAlone codecs;
    SilentPrompts prompts;
    HeadlessProgress progress;
    Catalogue catalogue;
};

}  // namespace sonavel
