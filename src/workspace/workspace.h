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
    Workspace(const HostServices& services, DocumentDialogs& documentDialogs,
              ViewDialogs& viewDialogs);
    ~Workspace() override;

    // May be null.
    void SetObserver(WorkspaceObserver* observer) { observer_ = observer; }
    // Views of new documents are shown in a client area of this size at once. Without it, whoever
    // observes the workspace calls their Show.
    void SetInitialViewSize(int width, int height);

    std::size_t Count() const { return sounds_.size(); }
    OpenSound& At(std::size_t index) { return *sounds_[index]; }
    const OpenSound& At(std::size_t index) const { return *sounds_[index]; }
    // Null when nothing is open.
    OpenSound* Active();
    std::optional<std::size_t> ActiveIndex() const;
    std::optional<std::size_t> IndexOf(const CSoundDoc& document) const;
    // The document at that path, for a file that is opened a second time.
    std::optional<std::size_t> IndexOfPath(const std::filesystem::path& path) const;

    // Each adds a document and makes it active. False when it was cancelled or failed; LastError()
    // then says why, and the open documents are as they were.
    bool NewDocument();  // the dialog "New"
    bool NewDocument(const NewSoundChoice& format);
    bool OpenDocument(const std::filesystem::path& path);
    // Titled with the prefix and the next number of that prefix.
    bool NewDocumentFromSound(Sound&& sound, std::string_view titlePrefix);
    bool NewDocumentFromClip() override;

    void Activate(std::size_t index);
    // Stops playing and recording, what was recorded so far going into the sound. To be called
    // before asking whether to save.
    void StopActivity(std::size_t index);
    // Closes without saving. The document active before it becomes active; those behind it move up.
    void Close(std::size_t index);

    // The dialog "Record", then recording into a new document or the active one.
    bool Record();

    ClipRecord& Clip() override { return clip_; }
    const std::string& LastError() const override { return lastError_; }
    void ClearError() { lastError_.clear(); }
    void OnStatusFormatChosen(StatusFormat format) override;
    const HostServices& Services() const { return services_; }
    ViewDialogs& Dialogs() { return viewDialogs_; }

  private:
    std::unique_ptr<OpenSound> MakeSound();
    OpenSound& Add(std::unique_ptr<OpenSound> sound);
    bool NewTitledDocument(const NewSoundChoice& format, std::string_view titlePrefix);
    bool StartRecording(const RecordChoice& choice);
    bool Fail(std::string_view reason);

    HostServices services_;
    DocumentDialogs& documentDialogs_;
    ViewDialogs& viewDialogs_;
    WorkspaceObserver* observer_ = nullptr;
    std::vector<std::unique_ptr<OpenSound>> sounds_;
    std::vector<OpenSound*> activationOrder_;  // the active one last
    UntitledTitles titles_;
    ClipRecord clip_;
    RecordChoice recordSettings_;
    int viewWidth_ = 0;
    int viewHeight_ = 0;
    std::string lastError_;
};

}  // namespace sonavel
