// The commands of the view: its own menu commands, and those that take numbers or print.
#include <algorithm>
#include <ostream>

#include "script/command_rows.h"
#include "script/report_text.h"
#include "script/script_session.h"
#include "view/commands/view_commands.h"
#include "view/draw/envelope.h"
#include "view/input/cursor_moves.h"

namespace sonavel::script {
namespace {

constexpr int kGreatestViewExtent = 32767;

void PrintScrollState(std::ostream& out, const char* name, const ScrollState& state) {
    out << ' ' << name << "-max=" << state.maximum << ' ' << name << "-page=" << state.page << ' '
        << name << "-position=" << state.position;
}

Outcome View(ScriptSession& session, const Arguments& words) {
    CSoundView& view = session.View();
    if (words.Has("WIDTH"))
        view.Resize(static_cast<int>(words.Whole("WIDTH")),
                    static_cast<int>(words.Whole("HEIGHT")));
    const Rectangle& waveform = view.State().Geometry().waveform;
    const Rectangle& client = view.State().Client();
    std::ostream& out = session.Out();
    out << "view width=" << client.Width() << " height=" << client.Height()
        << " waveform=" << waveform.left << ',' << waveform.top << ',' << waveform.right << ','
        << waveform.bottom;
    PrintScrollState(out, "h", view.Zoom().Horizontal());
    PrintScrollState(out, "v", view.Zoom().Vertical());
    out << " ratio=" << view.Zoom().TimeRatio()
        << " time-percent=" << FixedText(view.Zoom().TimePercent(), 3)
        << " level-percent=" << FixedText(view.Zoom().LevelPercent(), 3) << '\n';
    return Done();
}

Outcome ZoomRange(ScriptSession& session, const Arguments& words) {
    CSoundView& view = session.View();
    UserZoom zoom = view.Zoom().CurrentUserZoom();
    zoom.type = UserZoom::Type::kSample;
    zoom.startSample = words.Whole("START");
    zoom.endSample = words.Whole("END");
    if (zoom.startSample < 0 || zoom.endSample <= zoom.startSample ||
        zoom.endSample > std::int64_t{view.FrameCount()})
        return Failed("The range does not lie within the sound.");
    view.Zoom().Apply(zoom);
    return Done();
}

Outcome ScrollTo(ScriptSession& session, const Arguments& words) {
    session.View().Zoom().ScrollHorizontallyTo(words.Whole("POSITION"));
    return Done();
}

using CursorMove = Outcome (*)(CSoundView&, int, MoveMode);

template <CursorMove move>
Outcome MoveCursor(ScriptSession& session, const Arguments& words) {
    const MoveMode mode = words.Switch("extend") ? MoveMode::kExtend : MoveMode::kCollapse;
    return move(session.View(), static_cast<int>(words.Whole("PIXELS")), mode);
}

Outcome Envelope(ScriptSession& session, const Arguments& words) {
    const CSoundView& view = session.View();
    const auto channel = static_cast<unsigned>(words.Whole("channel"));
    const unsigned channels = view.Sound().GetChannels();
    if (channel >= channels)
        return Failed("The sound has no channel " + std::to_string(channel) + ".");
    const EnvelopeRequest request = {.wave = view.Sound(),
                                     .extremes = view.Extremes(),
                                     .channel = channel,
                                     .lane = view.State().Geometry().Lane(channel, channels),
                                     .horizontal = view.Zoom().Horizontal(),
                                     .vertical = view.Zoom().Vertical(),
                                     .selection = view.State().GetSelection()};
    for (const EnvelopeColumn& column : EnvelopeColumns(request))
        session.Out() << column.x << ' ' << column.yMax << ' ' << column.yMin
                      << (column.pen == ColumnPen::kSelected ? " selected\n" : " normal\n");
    return Done();
}

// Every command of the view's menus that has a script name.
std::vector<CommandRow> MenuRows() {
    std::vector<CommandRow> rows;
    for (const Command<CSoundView>& command : ViewCommands()) {
        if (*command.info.name == '\0') continue;
        const int id = command.info.id;
        rows.push_back({.name = command.info.name,
                        .does = command.info.prompt,
                        .run = [id](ScriptSession& session, const Arguments&) {
                            return session.Commands().RunCommand(id);
                        }});
    }
    return rows;
}

CommandRow CursorRow(std::string name, std::string does, Handler run) {
    return {.name = std::move(name),
            .does = std::move(does),
            .positional = {{"PIXELS", ValueRule::Whole(1, 0x7FFFFFFF)}},
            .keys = {{"extend", ValueRule::Switch(), "off"}},
            .run = std::move(run)};
}

}  // namespace

std::vector<CommandRow> ViewCommandRows() {
    const ValueRule extent = ValueRule::Whole(1, kGreatestViewExtent);
    std::vector<CommandRow> rows = {
        {.name = "view",
         .does = "Size the view's client area, then print a line about it",
         .positional = {{"WIDTH", extent}, {"HEIGHT", extent}},
         .firstOptional = 0,
         .run = View},
        {.name = "zoom-range",
         .does = "Fill the view with the frames from START up to END",
         .positional = {{"START", ValueRule::Position()}, {"END", ValueRule::Position()}},
         .run = ZoomRange},
        {.name = "scroll-to",
         .does = "Set the horizontal scroll position",
         .positional = {{"POSITION", ValueRule::Position()}},
         .run = ScrollTo},
        CursorRow("cursor-left", "Move the cursor back", MoveCursor<MoveCursorLeft>),
        CursorRow("cursor-right", "Move the cursor forward", MoveCursor<MoveCursorRight>),
        {.name = "envelope",
         .does = "Print a line for each drawn column of a channel",
         .keys = {{"channel", ValueRule::Whole(0, 1), "0"}},
         .run = Envelope},
    };
    for (CommandRow& row : MenuRows()) rows.push_back(std::move(row));
    return rows;
}

}  // namespace sonavel::script
