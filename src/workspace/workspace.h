// The open documents with their views, in the order in which they were opened, and what works
// across them: new documents from other sounds, and recording.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/clip_record.h"
#include "document/sound_doc.h"
#include "document/untitled_titles.h"
#include "recovery/work_keeper.h"
#include "view/commands/view_commands.h"
#include "view/sound_view.h"

namespace sonavel {

struct OpenSound {
    std::unique_ptr<CSoundDoc> document;
    std::unique_ptr<CSoundView> view;
    std::unique_ptr<SoundViewCommands> commands;
};

class WorkspaceObserver {
  public:
    virtual ~WorkspaceObserver() = default;

    // The document is complete; it becomes active right afterwards.
    virtual void OnDocumentAdded(OpenSound& sound) = 0;
    // Its windows must let go of it now.
    virtual void OnDocumentClosing(OpenSound& sound) = 0;
    // Null when the last document was closed.
    virtual void OnActivated(OpenSound* sound) = 0;
};

class Workspace : public ViewHost {
  public:
    explicit Workspace(const HostServices& services);
    ~Workspace() override;

    // May be null.
    void SetObserver(WorkspaceObserver* observer) { observer_ = observer; }
    // Keeps the unsaved work of all documents from now on; may be null, and has to live longer.
    void SetKeeper(recovery::WorkKeeper* keeper) { keeper_ = keeper; }
    // Views of new documents are shown in a client area of this size at once. Without it, whoever
    // observes the workspace calls their Show.
    void SetInitialViewSize(int width, int height);

    std::size_t Count() const { return sounds_.size(); }
    OpenSound& At(std::size_t index) { return *sounds_[index]; }
    const OpenSound& At(std::size_t index) const { return *sounds_[index]; }
    // Null when nothing is open.
    OpenSound* Active();
    const OpenSound* Active() const;
    std::optional<std::size_t> ActiveIndex() const;
    std::optional<std::size_t> IndexOf(const CSoundDoc& document) const;
    // The document at that path, for a file that is opened a second time.
    std::optional<std::size_t> IndexOfPath(const std::filesystem::path& path) const;

    // Each adds a document and makes it active; unless it is done, the open documents are as they
    // were.
    Outcome NewDocument(const NewSoundChoice& format);
    Outcome OpenDocument(const std::filesystem::path& path);
    Outcome ImportDocument(const std::filesystem::path& path, const ImportChoice& choice);
    // Titled with the prefix and the next number of that prefix.
    void NewDocumentFromSound(Sound&& sound, std::string_view titlePrefix);
    Outcome NewDocumentFromClip() override;
    // The program ends with documents open: what is unsaved stays with the keeper.
    void LeaveKeeper();
    // What another run left, as the keeper reads it back; needs one. A message says why not all of
    // it came back.
    Outcome RecoverDocument(const recovery::LeftWork& work);

    void Activate(std::size_t index);
    // Stops playing and recording, what was recorded so far going into the sound, and fails when
    // nothing was recorded. To be called before asking whether to save.
    Outcome StopActivity(std::size_t index);
    // Closes without saving. The document active before it becomes active; those behind it move up.
    void Close(std::size_t index);

    // What the dialog "Record" is opened with, and what its OK does: records into a new document or
    // the active one. There is nothing to ask while the active one records.
    Result<RecordRequest> QuestionOfRecord() const;
    Outcome Record(const RecordChoice& choice);

    ClipRecord& Clip() override { return clip_; }
    void OnChosen(const ViewChoice& choice) override;
    const HostServices& Services() const { return services_; }

  private:
    std::unique_ptr<OpenSound> MakeSound();
    OpenSound& Add(std::unique_ptr<OpenSound> sound);
    Outcome NewTitledDocument(const NewSoundChoice& format, std::string_view titlePrefix);

    HostServices services_;
    WorkspaceObserver* observer_ = nullptr;
    recovery::WorkKeeper* keeper_ = nullptr;
    std::vector<std::unique_ptr<OpenSound>> sounds_;
    std::vector<OpenSound*> activationOrder_;  // the active one last
    UntitledTitles titles_;
    ClipRecord clip_;
    RecordChoice recordSettings_;
    int viewWidth_ = 0;
    int viewHeight_ = 0;
};

}  // namespace sonavel
