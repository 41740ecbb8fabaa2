#include "app/help/control_tips.h"

#include <QAccessible>
#include <QLabel>

namespace sonavel {
namespace {

struct ControlTip {
    const char* dialog;  // the name of its class; empty for all
    const char* control;
    const char* sentence;
};

constexpr ControlTip kTips[] = {
    {"", "OK", "Takes what is set here."},
    {"", "Cancel", "Closes without changing anything."},
    {"", "Preview", "Plays the result without changing the sound; once more stops it."},
    {"", "Stop", "Stops what is being played."},
    {"", "Reset", "Brings the first values back."},
    {"", "Apply", "Takes what is set here and stays open."},
    {"", "Close", "Closes this window."},
    {"COptionSheet", "Name", "The set of colors to load, save or delete."},
    {"COptionSheet", "Load", "Takes the colors of the chosen set."},
    {"COptionSheet", "Save", "Keeps these colors as a set of that name."},
    {"COptionSheet", "Delete", "Removes the chosen set."},
    {"COptionSheet", "Defaults", "Brings the classic colors back."},
    {"", "Sampling Rate", "How many samples a second there are; 44100 is that of a compact disc."},
    {"", "Mono", "One channel."},
    {"", "Stereo", "Two channels, left and right."},
    {"", "Mono Channel", "One channel."},
    {"", "Stereo Channel", "Two channels, left and right."},
    {"", "8 Bits Data", "Small files with an audible hiss."},
    {"", "8 Bit Data", "Small files with an audible hiss."},
    {"", "8Bit Data", "Small files with an audible hiss."},
    {"", "8bit Data", "Small files with an audible hiss."},
    {"", "16 Bit Data", "What a compact disc has; right for most."},
    {"", "16Bit Data", "What a compact disc has; right for most."},
    {"", "16bit Data", "What a compact disc has; right for most."},
    {"", "32-bit float", "Nothing is lost by rounding or by levels beyond full scale."},
    {"CRecordDlg", "New Window", "Records into a new sound instead of the active one."},
    {"CRecordDlg", "Waiting", "Begins to record only after the time beside it has passed."},
    {"CRecordDlg", "Waiting Time(1/10 Sec )", "Tenths of a second until recording begins."},
    {"MixDialog", "Clipboard", "How loud the clipboard's sound becomes in the mix."},
    {"MixDialog", "Document", "How loud the sound that is there becomes in the mix."},
    {"CrossfadeDialog", "Start Level", "How loud it is at the start of the range."},
    {"CrossfadeDialog", "End Level", "How loud it is at the end of the range."},
    {"PasteReplicateDialog", "How many times do you paste?",
     "So many copies stand one behind the other."},
    {"MarkerDialog", "Label", "What the marker is called."},
    {"MarkerDialog", "Markers", "All markers of the sound; choose the one to change."},
    {"MarkerDialog", "Add", "Sets one more marker at the place shown."},
    {"MarkerDialog", "Delete", "Removes the chosen marker."},
    {"MarkerDialog", "Edit", "Gives the chosen marker what is set above."},
    {"PausesDialog", "Quiet below", "What stays below this level is a pause."},
    {"PausesDialog", "Least pause", "Shorter stretches are no pause."},
    {"PausesDialog", "Least sound", "Shorter sounds belong to the pause around them."},
    {"PausesDialog", "Do", "What is made of the pauses that were found."},
    {"PausesDialog", "Longer than", "A longer pause becomes as long as this."},
    {"UserZoomDialog", "Percent", "Shows so much of the whole."},
    {"UserZoomDialog", "Sample", "Shows what lies between two frames."},
    {"UserZoomDialog", "Time", "Shows what lies between two times."},
    {"UserZoomDialog", "Start Time(Sec)", "The first time that is shown."},
    {"UserZoomDialog", "End Time(Sec)", "The last time that is shown."},
    {"UserZoomDialog", "Start Sample", "The first frame that is shown."},
    {"UserZoomDialog", "End Sample", "The last frame that is shown."},
    {"UserZoomDialog", "Zoom Time(%)", "How much of the time is shown."},
    {"UserZoomDialog", "Zoom Level(%)", "How much of the level is shown."},
    {"ExportDialog", "Path", "The file that is written."},
    {"ExportDialog", "Browse...", "Chooses the folder and the name in a window."},
    {"ExportDialog", "Export", "Writes the file."},
    {"ExportDialog", "Title", "The tag of this name in the new file."},
    {"ExportDialog", "Artist", "The tag of this name in the new file."},
    {"ExportDialog", "Album", "The tag of this name in the new file."},
    {"ExportDialog", "Year", "The tag of this name in the new file."},
    {"ExportDialog", "Comment", "The tag of this name in the new file."},
    {"ExportDialog", "Copyright", "The tag of this name in the new file."},
    {"ExportDialog", "Format", "What kind of file is written."},
    {"ExportDialog", "Samples", "How exactly each sample is kept."},
    {"ExportDialog", "Write markers", "Keeps the markers, where the format can."},
    {"ExportDialog", "Write tags", "Keeps title, artist and other tags, where the format can."},
    {"RegionsDialog", "Export", "What becomes a file of its own."},
    {"RegionsDialog", "Format", "What kind of files are written."},
    {"RegionsDialog", "Quality of lossy formats", "0 makes small files, 10 the best ones."},
    {"RegionsDialog", "Folder", "Where the files are written."},
    {"RegionsDialog", "Browse...", "Chooses the folder in a window."},
    {"ImportDialog", "Channels", "How more than two channels become one or two."},
    {"ImportDialog", "Do the same with the files that follow", "Asks no more this time."},
    {"AboutDialog", "Logo", "Shows the logo once more."},
    {"AboutDialog", "Licences", "Shows the notices of all libraries."},
    {"PlaceManyDialog", "Points, one a line: x,y,z or name,x,y,z",
     "Where the sound is heard from, a file for each line."},
    {"PlaceManyDialog", "Load…", "Takes the points of a table."},
    {"PlaceManyDialog", "Folder", "Where the files are written."},
    {"PlaceManyDialog", "Browse…", "Chooses the folder in a window."},
    {"PlaceManyDialog", "Smooth", "Blends responses instead of taking the nearest."},
    {"PlaceManyDialog", "Replace files that are there already", "Else they are kept, and said."},
    {"SpatialDialog", "Preset", "Points that were saved under a name."},
    {"SpatialDialog", "Save…", "Keeps the points under a name."},
    {"SpatialDialog", "Delete", "Removes the chosen preset."},
    {"SpatialDialog", "Add", "Puts a point behind the chosen one."},
    {"SpatialDialog", "Remove", "Takes the chosen point away."},
    {"SpatialDialog", "Up", "Has the chosen point passed earlier."},
    {"SpatialDialog", "Down", "Has the chosen point passed later."},
};

bool IsA(const QObject& object, QLatin1String name) {
    for (const QMetaObject* meta = object.metaObject(); meta; meta = meta->superClass())
        if (QString::fromLatin1(meta->className()).section(u':', -1) == name) return true;
    return false;
}

// A box to choose from speaks by what is chosen; its label tells more.
QString LabelOf(const QDialog& dialog, const QWidget& control) {
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        if (label->buddy() == &control) return label->text().remove(u'&');
    return {};
}

QString NameForReaders(const QDialog& dialog, QWidget& control) {
    QString name = LabelOf(dialog, control);
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&control);
    if (name.isEmpty() && spoken) name = spoken->text(QAccessible::Name);
    while (name.endsWith(u':') || name.endsWith(u' ')) name.chop(1);
    return name;
}

}  // namespace

void AddControlTips(QDialog& dialog) {
    for (QWidget* control : dialog.findChildren<QWidget*>()) {
        if (control->focusPolicy() == Qt::NoFocus || !control->toolTip().isEmpty()) continue;
        const QString name = NameForReaders(dialog, *control);
        if (name.isEmpty()) continue;
        for (const ControlTip& tip : kTips)
            if (name.compare(QString::fromUtf8(tip.control), Qt::CaseInsensitive) == 0 &&
                (!*tip.dialog || IsA(dialog, QLatin1String(tip.dialog))))
                control->setToolTip(QObject::tr(tip.sentence));
    }
}

}  // namespace sonavel
