// Everything that a script works on while it runs: the documents that it may change, and what it
// asks of its host.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "codec/client/child_codecs.h"
#include "effects/effect_table.h"
#include "platform/headless/scripted_prompts.h"
#include "recovery/work_keeper.h"
#include "script/command_row.h"
#include "spatial/listener.h"
#include "workspace/workspace.h"

namespace sonavel::script {

inline constexpr int kInitialViewWidth = 640;
inline constexpr int kInitialViewHeight = 320;

// All of it lives longer than the session.
struct ScriptHost {
    ScriptedPrompts& prompts;  // those of the services
    const ChildCodecs& codecs;
    // Reports, messages and questions.
    std::ostream& out;
    // What relative paths are taken from; empty for the folder that the program works in.
    std::filesystem::path folder = {};
};

class ScriptSession {
  public:
    ScriptSession(const HostServices& services, const ScriptHost& host);
    // Keeps records of all documents to come in that folder.
    void KeepWorkIn(const std::filesystem::path& folder);
    // Why not all work is kept; empty when it is.
    std::string KeepingFault() const { return keeper_ ? keeper_->FaultText() : std::string(); }

    std::ostream& Out() { return host_.out; }
    Workspace& Sounds() { return workspace_; }
    ScriptedPrompts& Prompts() { return host_.prompts; }
    WaveClipboard& Clipboard() { return workspace_.Services().clipboard; }
    EffectState& Effects() { return effectState_; }
    const ChildCodecs& Codecs() const { return host_.codecs; }
    // Of the smooth 3D commands.
    Listener& Ears() { return ears_; }
    // For work that is opened from a folder; made when it is first asked for.
    recovery::WorkKeeper& Keeper();
    // What the last list of a folder showed; a new list where there was none.
    const std::vector<recovery::LeftWork>& LeftIn(const std::filesystem::path& folder);
    const std::vector<recovery::LeftWork>& ListLeftIn(const std::filesystem::path& folder);
    // The path that a document is handed for a word: absolute, because a document takes its
    // extension from the first "." of its path.
    std::filesystem::path PathOf(const std::string& word) const;

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
    ScriptHost host_;
    EffectState effectState_;
    Listener ears_;
    std::unique_ptr<recovery::WorkKeeper> keeper_;
    std::map<std::filesystem::path, std::vector<recovery::LeftWork>> left_;
    Workspace workspace_;
};

// As it stands, taken from the folder that the program works in.
std::filesystem::path AbsolutePath(const std::filesystem::path& path);

}  // namespace sonavel::script
