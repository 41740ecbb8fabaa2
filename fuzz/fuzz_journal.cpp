// Fuzzes what brings unsaved work back: the bytes become records with true checksums, and what is
// left of the bytes stands behind them as it is. Whatever they say, the document that comes back
// can be edited, and its history can be walked.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>

#include "document/sound_doc.h"
#include "platform/headless/headless_progress.h"
#include "platform/headless/headless_wave_devices.h"
#include "platform/headless/memory_clipboard.h"
#include "platform/headless/silent_prompts.h"
#include "recovery/journal_bytes.h"
#include "recovery/journal_file.h"
#include "recovery/left_work.h"
#include "recovery/replay.h"

namespace {

using namespace sonavel;

void Require(bool promise) {
    if (!promise) std::abort();
}

// The folder of one document's work, in memory.
class WorkFolder {
  public:
    WorkFolder() : path_("/dev/shm/fuzz-journal-" + std::to_string(getpid())) {
        std::filesystem::create_directory(path_);
    }
    ~WorkFolder() { std::filesystem::remove_all(path_); }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

// A record of the input: its type, the lengths of record (two bytes) and samples, and both.
constexpr std::size_t kInputHeadBytes = 4;

void WriteJournal(const std::filesystem::path& folder, std::span<const std::uint8_t> input) {
    std::ofstream file(folder / recovery::kJournalName, std::ios::binary);
    const auto put = [&](std::span<const std::uint8_t> bytes) {
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    };
    for (std::uint32_t number = 0; input.size() >= kInputHeadBytes; ++number) {
        const std::size_t record = input[1] + 256u * input[2], samples = input[3];
        if (input.size() - kInputHeadBytes < record + samples) break;
        const auto body = input.subspan(kInputHeadBytes, record);
        const auto behind = input.subspan(kInputHeadBytes + record, samples);
        put(recovery::MakeHead(number, input[0], body, behind));
        put(body);
        put(behind);
        input = input.subspan(kInputHeadBytes + record + samples);
    }
    put(input);
}

void WalkHistory(CSoundDoc& document) {
    Require(IsEditable(document.Sound().GetFormat()));
    const std::size_t bytes = document.Sound().GetDataSize();
    std::size_t undone = 0;
    while (document.Undo()) ++undone;
    while (undone > 0 && document.Redo()) --undone;
    Require(undone == 0 && document.Sound().GetDataSize() == bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const WorkFolder folder;
    WriteJournal(folder.Path(), {data, size});
    SilentPrompts prompts;
    HeadlessProgress progress;
    MemoryClipboard clipboard;
    HeadlessWaveDevices devices(WavePace::kAsFastAsAsked);
    const ProgramFolder program(folder.Path());
    CSoundDoc document({prompts, progress, clipboard, devices, program});
    const auto left = recovery::LookAtLeftWork(folder.Path());
    const auto replay = recovery::ReplayInto(document, folder.Path());
    Require(!replay || left);
    if (!replay) return 0;
    document.SetSavesUndo(true);
    WalkHistory(document);
    return 0;
}
