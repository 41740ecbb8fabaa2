// What the commands of the view and the workspace ask before they run, and the answers that they
// take, as plain values. Front ends show the one and gather the other.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "document/document_questions.h"
#include "document/edit_operations.h"
#include "platform/outcome.h"
#include "sound/marker_list.h"

namespace sonavel {

class CSoundView;

// The dialog "User Defined Zoom"; only the fields of the chosen type count.
struct UserZoom {
    enum class Type { kPercent, kSample, kTime };

    Type type = Type::kPercent;
    double levelPercent = 100;
    double timePercent = 100;
    std::int64_t startSample = 0;  // frames, [start, end)
    std::int64_t endSample = 0;
    double startSeconds = 0;  // three decimals
    double endSeconds = 0;
};

// What a percent box holds: the number before the first "%", 0 when there is none.
double PercentFromText(const std::string& text);

// The dialog "Mix". Percent, 0 to kHighestMixPercent.
inline constexpr int kHighestMixPercent = 200;

struct MixQuestion {
    std::uint32_t startFrame = 0;
    std::uint32_t endFrame = 0;
    unsigned bits = 16;  // of the sound
};

struct MixChoice {
    int clipboardPercent = 100;
    int destinationPercent = 100;
};

// The dialog "Crossfade".
struct CrossfadeChoice {
    int clipboardStartPercent = 0;
    int clipboardEndPercent = 100;
    int destinationStartPercent = 100;
    int destinationEndPercent = 0;
};

// The dialog "Paste Replicate" takes 1 to kHighestReplicateCount.
inline constexpr int kHighestReplicateCount = edit::kHighestReplicateCount;

// The dialog "Go to Cursor": a frame or a time.
struct GoToRequest {
    std::uint32_t cursorFrame = 0;
    std::uint32_t frameCount = 0;
    std::uint32_t samplesPerSecond = 0;
};

struct GoToChoice {
    enum class Unit { kFrame, kTime };

    Unit unit = Unit::kFrame;
    std::uint32_t frame = 0;
    double seconds = 0;
};

// The dialog "Marker": it shows a list, works on a copy of it, and hands back what to change.
struct MarkerDialogRequest {
    enum class Start { kList, kAdd, kEdit };

    Start start = Start::kList;
    std::uint32_t markerId = 0;  // the marker to begin with, 0 for none
    MarkerList markers;
    std::uint32_t frameCount = 0;
    std::uint32_t samplesPerSecond = 0;
    std::uint32_t newPosition = 0;  // what Add proposes
    std::uint32_t newLength = 0;
};

struct MarkerEdit {
    enum class Kind { kAdd, kSet, kDelete };

    Kind kind = Kind::kAdd;
    std::uint32_t id = 0;  // of kSet and kDelete
    std::uint32_t position = 0;
    std::string name;  // empty: the default name, or for kSet the old one
    std::uint32_t length = 0;
};

// The dialog "Clipboard Contents".
struct ClipboardContents {
    std::string attributes;  // "44,100 Hz, 16-bit, Stereo"
    std::uint64_t totalBytes = 0;
    std::uint32_t samples = 0;  // frames
    double seconds = 0;
};

// The Preview button of "Clipboard Contents".
class ClipboardPreview {
  public:
    virtual ~ClipboardPreview() = default;
    virtual void Play() = 0;
    virtual void Stop() = 0;
};

// The dialog "Record".
inline constexpr int kHighestWaitingTenths = 30000;

struct RecordChoice {
    enum class Target { kActiveDocument, kNewDocument };

    Target target = Target::kNewDocument;
    NewSoundChoice format;  // of the new document
    bool waiting = true;    // kept for the next time, nothing else
    int waitingTenths = 1000;
};

struct RecordRequest {
    // Nothing without an active document; "New Window" is then on and cannot be changed. With one,
    // its format is shown, locked as long as "New Window" is off.
    std::optional<NewSoundChoice> documentFormat;
    RecordChoice initial;
};

// --- What is asked with; each fails where there is nothing to ask

Result<UserZoom> QuestionOfUserZoom(const CSoundView& view);
Result<GoToRequest> QuestionOfGoTo(const CSoundView& view);
Result<MarkerDialogRequest> QuestionOfMarkers(const CSoundView& view,
                                              MarkerDialogRequest::Start start,
                                              std::uint32_t markerId);

}  // namespace sonavel
