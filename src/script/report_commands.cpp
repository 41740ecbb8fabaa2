// The commands that print what a document holds.
#include <algorithm>
#include <ostream>

#include "script/command_rows.h"
#include "script/report_text.h"
#include "script/script_session.h"
#include "sound/sample_texts.h"

namespace sonavel::script {
namespace {

constexpr std::int64_t kMostFrames = std::int64_t{1} << 62;
constexpr int kDecimals = 7;  // of floats

Outcome Info(ScriptSession& session, const Arguments&) {
    const CSoundDoc& document = session.Document();
    const CWave& sound = document.Sound();
    const CSoundView& view = session.View();
    session.Out() << "document " << session.Sounds().ActiveIndex().value() + 1
                  << " title=" << QuotedText(document.Title())
                  << " rate=" << sound.GetSamplesPerSecond() << " channels=" << sound.GetChannels()
                  << " bits=" << sound.GetBits() << " frames=" << sound.GetFrameCount()
                  << " bytes=" << sound.GetDataSize()
                  << " duration=" << FixedText(sound.GetDuration(), 6)
                  << " modified=" << (document.GetModified() ? 1 : 0)
                  << " selection=" << view.State().GetSelectionEnds().start << ".."
                  << view.State().GetSelectionEnds().end << " cursor=" << view.State().Cursor()
                  << " markers=" << sound.Markers().Count() << '\n';
    return Done();
}

Outcome Markers(ScriptSession& session, const Arguments&) {
    for (const Marker& marker : session.Document().Sound().Markers().All())
        session.Out() << "marker " << marker.id << " position=" << marker.position
                      << " length=" << marker.length << " name=" << QuotedText(marker.name) << '\n';
    return Done();
}

Outcome Samples(ScriptSession& session, const Arguments& words) {
    const CWave& sound = session.Document().Sound();
    const std::int64_t frames = sound.GetFrameCount();
    // Nothing lies before the start of the sound; the bound keeps the sum below within its range.
    const std::int64_t start = std::clamp(words.Whole("START"), -kMostFrames, frames);
    const std::int64_t end = start + std::clamp(words.Whole("COUNT"), std::int64_t{0}, kMostFrames);
    for (std::int64_t frame = std::max<std::int64_t>(start, 0); frame < std::min(end, frames);
         ++frame) {
        session.Out() << frame;
        for (unsigned channel = 0; channel < sound.GetChannels(); ++channel)
            session.Out() << ' '
                          << SampleText(sound, channel, static_cast<std::uint32_t>(frame),
                                        kDecimals);
        session.Out() << '\n';
    }
    return Done();
}

Outcome History(ScriptSession& session, const Arguments&) {
    const UndoHistory& history = session.Document().History();
    for (std::size_t i = 0; i < history.Count(); ++i) {
        const UndoStep& step = history.StepAt(i);
        session.Out() << "step " << i << " kind=" << step.kind << " name=" << QuotedText(step.name)
                      << (history.CurrentPosition() == i ? " *" : "") << '\n';
    }
    return Done();
}

}  // namespace

std::vector<CommandRow> ReportCommandRows() {
    return {
        {.name = "info", .does = "Print a line about the active document", .run = Info},
        {.name = "markers", .does = "Print a line for each marker", .run = Markers},
        {.name = "samples",
         .does = "Print a line for each of COUNT frames from START on",
         .positional = {{"START", ValueRule::Position()}, {"COUNT", ValueRule::Position()}},
         .run = Samples},
        {.name = "history", .does = "Print a line for each undo step", .run = History},
    };
}

}  // namespace sonavel::script
