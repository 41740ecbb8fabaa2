// CSoundDoc: one sound document, with its sound, its preview sound, its options and its undo history.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "audio/wave_player.h"
#include "document/document_dialogs.h"
#include "document/document_options.h"
#include "document/undo_history.h"
#include "platform/host_services.h"

namespace sonavel {

// What a document asks of its windows.
class DocumentObserver {
  public:
    virtual ~DocumentObserver() = default;

    // The sound changed from this frame on; 0 with a new format or a new length rebuilds everything.
    virtual void OnSoundChanged(std::uint32_t firstChangedFrame) = 0;
    virtual void OnTitleOrModifiedChanged() = 0;
    virtual void MaximizeFrame() = 0;
    // Starts playback of the sound from its first byte.
    virtual void PlayFromStart() = 0;
};

class CSoundDoc {
  public:
    CSoundDoc(const HostServices& services, DocumentDialogs& dialogs);
    ~CSoundDoc();
    CSoundDoc(const CSoundDoc&) = delete;
    CSoundDoc& operator=(const CSoundDoc&) = delete;

    void AddObserver(DocumentObserver* observer);
    void RemoveObserver(DocumentObserver* observer);

    // --- Life cycle -----------------------------------------------------------------------------

    // Asks for the format; false when the dialog was cancelled.
    bool NewDocument();
    // Reads by extension: the text from the first "." of the path on. On failure the sound is
    // unchanged and LastError() says why.
    bool OpenDocument(const std::filesystem::path& path);
    // Writes by extension; takes the path as its own on success.
    bool SaveDocument(const std::filesystem::path& path);
    // The extended dialog, the conversions chosen there, then SaveDocument.
    bool SaveAs();

    // --- Identity -------------------------------------------------------------------------------

    const std::filesystem::path& Path() const { return path_; }  // empty while untitled
    const std::string& Title() const { return title_; }
    void SetTitle(std::string_view title);
    bool IsModified() const { return sound_.GetModified(); }
    void SetModified(bool modified);

    const std::string& LastError() const { return lastError_; }
    void SetLastError(std::string_view text) { lastError_ = text; }

    // --- Contents -------------------------------------------------------------------------------

    CWavePlayer& Sound() { return sound_; }
    const CWavePlayer& Sound() const { return sound_; }
    CWavePlayer& Preview() { return preview_; }
    const CWavePlayer& Preview() const { return preview_; }
    const DocumentOptions& Options() const { return options_; }
    void ReloadOptions();
    UndoHistory& History() { return history_; }
    const UndoHistory& History() const { return history_; }
    const HostServices& Services() const { return services_; }
    DocumentDialogs& Dialogs() { return dialogs_; }

    // Pushes a copy of the sound as an undo step when undo is on and the sound has data. False only
    // when the memory cannot be had and the person chose not to go on without undo.
    bool PushUndoStep(std::string_view name);
    // Tells every observer that the sound changed from this frame on.
    void NotifyChanged(std::uint32_t firstChangedFrame);

    // Fills the preview sound from floating-point samples, one a frame for mono and left/right pairs
    // for stereo; `lengthBytes` divided by the channel count gives the frames, 0 standing for the
    // sound's frame count.
    enum class PreviewFormat { kOfTheSound, kStereo16 };
    enum class PreviewPlay { kNo, kYes };
    bool MakePreview(std::span<const float> samples, PreviewPlay play, std::uint32_t lengthBytes,
                     PreviewFormat format);

  private:
    HostServices services_;
    DocumentDialogs& dialogs_;
    CWavePlayer sound_;
    CWavePlayer preview_;
    DocumentOptions options_;
    UndoHistory history_;
    std::filesystem::path path_;
    std::string title_;
    std::string lastError_;
};

}  // namespace sonavel
