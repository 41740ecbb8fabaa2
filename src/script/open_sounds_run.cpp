#include "script/open_sounds_run.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "document/sound_difference.h"
#include "platform/failure_texts.h"
#include "platform/headless/headless_wave_devices.h"
#include "script/command_rows.h"
#include "script/script_progress.h"
#include "script/script_runner.h"

namespace sonavel::script {
namespace {

constexpr char kActivate[] = "activate";
constexpr std::size_t kReserveBytes = std::size_t{1} << 20;

Outcome FailedInLine(int line, const std::string& why) {
    return Failed("Line " + std::to_string(line) + ": " + why);
}

Outcome CheckGrammar(const ParsedScript& script) {
    if (!script.mistakes.empty())
        return FailedInLine(script.mistakes.front().line, script.mistakes.front().text);
    for (const ParsedCommand& command : script.commands)
        if (command.row->inEditor == InEditor::kRefused)
            return FailedInLine(command.line, "the command " + command.row->name +
                                                  " does not run in the editor, which keeps its "
                                                  "sounds open and saves them itself");
    return Done();
}

// Begins as the person's clipboard and keeps what the script puts there to itself.
class ScriptClipboard : public WaveClipboard {
  public:
    explicit ScriptClipboard(const WaveClipboard& persons) : persons_(persons) {}

    bool OffersWave() const override { return image_.has_value() || persons_.OffersWave(); }
    std::optional<std::vector<std::uint8_t>> GetImage() const override {
        return image_ ? image_ : persons_.GetImage();
    }
    bool SetImage(std::vector<std::uint8_t> image) override {
        image_ = std::move(image);
        ++number_;
        return true;
    }
    // The sounds of a script know no number of the person's.
    std::uint64_t OwnNumber() const override { return number_; }

  private:
    const WaveClipboard& persons_;
    std::optional<std::vector<std::uint8_t>> image_;
    std::uint64_t number_ = 0;
};

void TakeTags(CSoundDoc& live, const CSoundDoc& copy) {
    const std::vector<SoundTag> before = live.Tags();
    if (before == copy.Tags()) return;
    for (const SoundTag& tag : before)
        if (std::ranges::find(copy.Tags(), tag.key, &SoundTag::key) == copy.Tags().end())
            live.SetTag(tag.key, "");
    for (const SoundTag& tag : copy.Tags()) live.SetTag(tag.key, tag.value);
}

void TakeTagsAndPlace(OpenSound& live, OpenSound& copy) {
    TakeTags(*live.document, *copy.document);
    CSoundView& view = *live.view;
    if (view.State().WaveformWidth() > std::int64_t{view.FrameCount()}) view.Zoom().FitTime();
    const Selection selection = copy.view->State().GetSelection();
    view.State().SetSelection(selection.start, selection.end);
    view.State().SetCursor(copy.view->State().Cursor());
    view.Repaint().TimeAreas();
}

class OpenSoundsRunner {
  public:
    OpenSoundsRunner(const OpenSoundsScript& script, Workspace& sounds, const ChildCodecs& codecs,
                     const EffectState& effects)
        : sounds_(sounds),
          before_(sounds.Count()),
          parsed_(ParseScript(script.text, AllCommandRows())),
          prompts_(printed_),
          progress_(sounds.Services().progress),
          clipboard_(sounds.Services().clipboard),
          session_({prompts_, progress_, clipboard_, devices_, sounds.Services().folder,
                    sounds.Services().codecs, sounds.Services().undo},
                   {prompts_, codecs, printed_, script.folder}) {
        session_.Effects() = effects;
    }

    OpenSoundsRun Run() {
        report_.commands = parsed_.commands.size();
        report_.outcome = RunAll();
        report_.printed = printed_.str();
        return std::move(report_);
    }

  private:
    Outcome RunAll();
    std::set<std::size_t> Reached() const;
    Outcome CopySounds();
    Outcome CopySound(std::size_t index);
    Outcome RunScript();
    Outcome HandOver();
    Outcome PrepareHandOver();
    Outcome OpenNewSounds();
    Outcome OpenNewSound(OpenSound& made);
    Outcome OpenAgain(const FileOrigin& file);

    Workspace& sounds_;
    std::size_t before_;  // open at the start
    ParsedScript parsed_;
    std::ostringstream printed_;
    ScriptedPrompts prompts_;
    ScriptProgress progress_;
    ScriptClipboard clipboard_;
    HeadlessWaveDevices devices_{WavePace::kAsFastAsAsked};
    ScriptSession session_;
    std::vector<std::size_t> copied_;
    std::vector<SoundEdit> held_;  // nobody touches the sounds until their copies are done
    std::vector<TakingOver> taking_;
    // Given back when what must not fail begins: the few small blocks that it takes.
    std::unique_ptr<std::array<std::uint8_t, kReserveBytes>> reserve_;
    OpenSoundsRun report_{.outcome = Done()};
};

Outcome OpenSoundsRunner::RunAll() {
    if (Outcome checked = CheckGrammar(parsed_); !checked) return checked;
    if (Outcome copied = CopySounds(); !copied) return copied;
    if (Outcome ran = RunScript(); !ran) return ran;
    held_.clear();
    return HandOver();
}

// --- Copies

// Sounds that no command can come to are not copied.
std::set<std::size_t> OpenSoundsRunner::Reached() const {
    std::set<std::size_t> reached;
    if (const auto active = sounds_.ActiveIndex()) reached.insert(*active);
    for (const ParsedCommand& command : parsed_.commands) {
        if (command.row->name != kActivate) continue;
        const auto index = static_cast<std::uint64_t>(command.arguments.Whole("N")) - 1;
        if (index < before_) reached.insert(static_cast<std::size_t>(index));
    }
    return reached;
}

Outcome OpenSoundsRunner::CopySounds() {
    const std::set<std::size_t> reached = Reached();
    for (std::size_t index = 0; index < before_; ++index) {
        Outcome made =
            reached.contains(index) ? CopySound(index) : session_.Sounds().NewDocument({});
        if (!made) return made;
    }
    copied_.assign(reached.begin(), reached.end());
    if (const auto active = sounds_.ActiveIndex()) session_.Sounds().Activate(*active);
    return Done();
}

Outcome OpenSoundsRunner::CopySound(std::size_t index) {
    const OpenSound& live = sounds_.At(index);
    if (live.document->Sound().IsRecording())
        return Failed("The sound \"" + live.document->Title() +
                      "\" cannot be changed while recording.");
    // Dropped without a change; it also ends playing and the marker edit that goes on.
    Result<SoundEdit> held = live.document->BeginUnrecordedEdit(ReplacesFormat());
    if (!held) return held.Ended();
    held_.push_back(*std::move(held));
    const Rectangle& client = live.view->State().Client();
    if (client.Width() > 0) session_.Sounds().SetInitialViewSize(client.Width(), client.Height());
    if (Outcome made = session_.Sounds().NewDocument({}); !made) return made;
    if (Outcome copied = session_.Document().TakeCopyOf(*live.document); !copied) return copied;
    ZoomDefault(session_.View());
    ViewState& state = session_.View().State();
    const Selection selection = live.view->State().GetSelection();
    state.SetSelection(selection.start, selection.end);
    state.SetCursor(live.view->State().Cursor());
    return Done();
}

// --- Running

Outcome OpenSoundsRunner::RunScript() {
    const ScriptEnd end = RunCommands(parsed_, session_, progress_);
    switch (end.kind) {
        case ScriptEnd::Kind::kSucceeded:
            return Done();
        case ScriptEnd::Kind::kCancelled:
            return Cancelled();
        case ScriptEnd::Kind::kCommandFailed:
            break;
    }
    return FailedInLine(end.line, end.command + ": " + end.reason);
}

// --- The results

// All that may fail comes first, so that the sounds that were there are changed all or none.
Outcome OpenSoundsRunner::HandOver() {
    const std::optional<std::size_t> active = session_.Sounds().ActiveIndex();
    if (Outcome prepared = PrepareHandOver(); !prepared) {
        taking_.clear();
        while (sounds_.Count() > before_) sounds_.Close(sounds_.Count() - 1);
        return prepared;
    }
    reserve_.reset();
    for (TakingOver& taking : taking_) taking.Apply();
    report_.changedSounds = static_cast<std::size_t>(
        std::ranges::count_if(taking_, [](const TakingOver& taking) { return taking.IsEdit(); }));
    report_.newSounds = sounds_.Count() - before_;
    for (const std::size_t index : copied_) try {
            TakeTagsAndPlace(sounds_.At(index), session_.Sounds().At(index));
        } catch (const std::bad_alloc&) {
            // What the sounds are has come about, and counts.
        }
    if (active && *active < sounds_.Count()) sounds_.Activate(*active);
    return Done();
}

Outcome OpenSoundsRunner::PrepareHandOver() try {
    reserve_ = std::make_unique<std::array<std::uint8_t, kReserveBytes>>();
    if (Outcome opened = OpenNewSounds(); !opened) return opened;
    taking_.reserve(copied_.size());
    for (const std::size_t index : copied_) {
        auto taking =
            TakingOver::Prepare(*sounds_.At(index).document,
                                session_.Sounds().At(index).document->Sound(), kScriptStep);
        if (!taking) return taking.Ended();
        taking_.push_back(*std::move(taking));
    }
    return Done();
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

Outcome OpenSoundsRunner::OpenNewSounds() {
    for (std::size_t index = before_; index < session_.Sounds().Count(); ++index)
        if (Outcome opened = OpenNewSound(session_.Sounds().At(index)); !opened) return opened;
    return Done();
}

Outcome OpenSoundsRunner::OpenNewSound(OpenSound& made) {
    CSoundDoc& document = *made.document;
    const FileOrigin* file = document.File();
    if (file && !sounds_.IndexOfPath(file->path)) {
        if (Outcome opened = OpenAgain(*file); !opened) return opened;
        auto taking =
            TakingOver::Prepare(*sounds_.Active()->document, document.Sound(), kScriptStep);
        if (!taking) return taking.Ended();
        taking->Apply();
    } else {
        std::string prefix = document.Title();
        prefix.erase(prefix.find_last_not_of("0123456789") + 1);
        sounds_.NewDocumentFromSound(document.Sound().Exchange({}), prefix);
    }
    TakeTagsAndPlace(*sounds_.Active(), made);
    return Done();
}

Outcome OpenSoundsRunner::OpenAgain(const FileOrigin& file) {
    return file.import ? sounds_.ImportDocument(file.path, *file.import)
                       : sounds_.OpenDocument(file.path);
}

}  // namespace

OpenSoundsRun RunOnOpenSounds(const OpenSoundsScript& script, Workspace& sounds,
                              const ChildCodecs& codecs, const EffectState& effects) try {
    return OpenSoundsRunner(script, sounds, codecs, effects).Run();
} catch (const std::bad_alloc&) {
    return {.outcome = Failed(failure::kMemory)};
}

}  // namespace sonavel::script
