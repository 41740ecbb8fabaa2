// Everything that a script works on while it runs: the open documents and the headless services.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "batch/command_row.h"
#include "codec/client/child_codecs.h"
#include "effects/effect_table.h"
#include "platform/headless/headless_progress.h"
#include "platform/headless/headless_wave_devices.h"
#include "platform/headless/memory_clipboard.h"
#include "platform/headless/scripted_prompts.h"
#include "platform/program_folder.h"
#include "recovery/work_keeper.h"
#include "spatial/listener.h"
#include "workspace/workspace.h"

namespace sonavel::batch {

inline constexpr int kInitialViewWidth = 640;
inline constexpr int kInitialViewHeight = 320;

class BatchSession {
  public:
    // Reports, messages and questions go to `out`; the percentages of long operations to
    // `progressOut`, null for nowhere.
    BatchSession(const ProgramFolder& folder, std::ostream& out, std::ostream* progressOut);
    // Keeps records of all documents to come in that folder.
    void KeepWorkIn(const std::filesystem::path& folder);
    // Why not all work is kept; empty when it is.
    std::string KeepingFault() const { return keeper_ ? keeper_->FaultText() : std::string(); }

    std::ostream& Out() { return out_; }
    Workspace& Sounds() { return workspace_; }
    ScriptedPrompts& Prompts() { return prompts_; }
    MemoryClipboard& Clipboard() { return clipboard_; }
    EffectState& Effects() { return effectState_; }
    const ChildCodecs& Codecs() const { return codecs_; }
    // Of the smooth 3D commands.
    Listener& Ears() { return ears_; }
    // For work that is opened from a folder; made when it is first asked for.
    recovery::WorkKeeper& Keeper();
    // What the last list of a folder showed; a new list where there was none.
    const std::vector<recovery::LeftWork>& LeftIn(const std::filesystem::path& folder);
    const std::vector<recovery::LeftWork>& ListLeftIn(const std::filesystem::path& folder);

    bool HasActive() { return workspace_.Active() != nullptr; }
    // These need an active document.
    CSoundDoc& Document() { return *workspace_.Active()->document; }
    CSoundView& View() { return *workspace_.Active()->view; }
    // The selection, or the whole sound.
    EffectTarget Target() {
        const Selection selection = View().State().GetSelection();
        return {Document(), selection.start, selection.end, effectState_};
    }
    SoundViewCommands& Commands() { return *workspace_.Active()->commands; }

  private:
    std::ostream& out_;
    ProgramFolder folder_;
    ScriptedPrompts prompts_;
    HeadlessProgress progress_;
    MemoryClipboard clipboard_;
    HeadlessWaveDevices devices_;
    ChildCodecs codecs_;
    EffectState effectState_;
    Listener ears_;
    std::unique_ptr<recovery::WorkKeeper> keeper_;
    std::map<std::filesystem::path, std::vector<recovery::LeftWork>> left_;
    Workspace workspace_;
};

// The path that a document is handed for a word: absolute, because a document takes its extension
// from the first "." of its path.
std::filesystem::path AbsolutePath(const std::string& word);

}  // namespace sonavel::batch
