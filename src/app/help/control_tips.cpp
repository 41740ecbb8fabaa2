#include "app/help/control_tips.h"

#include <QAccessible>
#include <QComboBox>
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
    {"COptionSheet", "Test", "Plays a tone with the settings that are chosen here."},
    {"COptionSheet", "KEMAR, 1994", "Hears with the responses that come with the program."},
    {"COptionSheet", "A SOFA file", "Hears with responses of your own."},
    {"COptionSheet", "SOFA file", "The file with the responses."},
    {"COptionSheet", "Browse…", "Chooses the file in a window."},
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
    {"MixDialog", "Clipboard: Level", "How loud the clipboard's sound becomes in the mix."},
    {"MixDialog", "Destination: Level", "How loud the sound that is there becomes in the mix."},
    {"CrossfadeDialog", "Clipboard: Start Level",
     "How loud the clipboard's sound is at the start of the range."},
    {"CrossfadeDialog", "Clipboard: End Level",
     "How loud the clipboard's sound is at the end of the range."},
    {"CrossfadeDialog", "Destination: Start Level",
     "How loud the sound that is there is at the start of the range."},
    {"CrossfadeDialog", "Destination: End Level",
     "How loud the sound that is there is at the end of the range."},
    {"QInputDialog", "Length (1.5, 250ms, 1:02, 441000#)",
     "Seconds, milliseconds, minutes and seconds, or frames with a # behind them."},
    {"QFileDialog", "Sidebar", "Folders that are wanted often."},
    {"SpatialDialog", "Scene", "A click chooses a point; a drag looks from another side."},
    {"QFileDialog", "Look in", "The folder that is shown."},
    {"QFileDialog", "Files", "What the folder holds."},
    {"QFileDialog", "File name", "The name, with or without its folder."},
    {"QFileDialog", "Files of type", "Which files are shown."},
    {"QFileDialog", "Open", "Takes the chosen files."},
    {"QFileDialog", "Save", "Writes the file of that name."},
    {"SaveAsDialog", "Recent(M)", "The folders that were used last."},
    {"SaveAsDialog", "Full Path", "Where the file is going to be."},
    {"SaveAsDialog", "Format", "How samples are kept; PCM loses nothing."},
    {"SaveAsDialog", "Original", "What the sound is now."},
    {"SaveAsDialog", "Update", "What the file will be."},
    {"SaveAsDialog", "More(I)...", "Asks for what else the file can hold."},
    {"SaveAsDialog", "Not Save Marker", "Leaves the markers out of the file."},
    {"CommandPalette", "A few letters of a command",
     "Lists the commands that hold these letters; Return gives the chosen one."},
    {"CPanpotDlg", "Pan", "Keeps the whole range at one place between the loudspeakers."},
    {"CPanpotDlg", "Crossfade", "Walks from one place to another in the course of the range."},
    {"CDynamicsDlg", "Link left and right", "Both channels get louder and softer together."},
    {"CReverbDlg", "Mixing", "How much of the result is reverberation."},
    {"CrosstalkDialog", "Loudspeakers at",
     "How far each loudspeaker stands to the side, seen from the listener."},
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
    {"PlaceManyDialog", "Sounds", "Which sounds are placed."},
    {"PlaceManyDialog", "Folder of the sounds", "All sound files in it are placed."},
    {"PlaceManyDialog", "Points, one a line: x,y,z or name,x,y,z; further x,y,z make a path",
     "Where the sound is heard from, a file for each line."},
    {"PlaceManyDialog", "Load…", "Takes the points of a table."},
    {"PlaceManyDialog", "Folder", "Where the files are written."},
    {"PlaceManyDialog", "Browse…", "Chooses the folder in a window."},
    {"PlaceManyDialog", "Smooth", "Blends responses instead of taking the nearest."},
    {"PlaceManyDialog", "Replace files that are there already", "Else they are kept, and said."},
    {"RegionsDialog", "Files", "The names that the files are going to have."},
    {"SpatialDialog", "Point", "The number of the point at which the sound is heard."},
    {"SpatialDialog", "Start", "Where the path begins; the list and the scene set the marked one."},
    {"SpatialDialog", "End", "Where the path ends; the list and the scene set the marked one."},
    {"SpatialDialog", "Points", "All points by their places; choose one to hear the sound there."},
    {"SpatialDialog", "x (right)", "How far the point lies to the right of the head."},
    {"SpatialDialog", "y (front)", "How far the point lies before the head."},
    {"SpatialDialog", "z (up)", "How far the point lies above the ears."},
    {"SpatialDialog", "Azimuth", "Degrees clockwise from straight ahead."},
    {"SpatialDialog", "Elevation", "Degrees above the ears; below them with a minus."},
    {"SpatialDialog", "Distance", "How far away the point is; far sounds are softer."},
    {"SpatialDialog", "Gain", "How loud the sound is there, of what it is nearby."},
    {"SceneDialog", "Scene", "A click chooses a point; a drag looks from another side."},
    {"SceneDialog", "Add Sound", "Puts an open sound or one of a file into the scene."},
    {"SceneDialog", "Remove Sound", "Takes the chosen sound out of the scene."},
    {"SceneDialog", "Open Scene…", "Takes the sounds and places of a file."},
    {"SceneDialog", "Save Scene…", "Keeps sounds and places in a file."},
    {"SceneDialog", "Sounds", "The sounds of the scene, with when and how loud each begins."},
    {"SceneDialog", "Points", "The points of the chosen sound, passed in their order."},
    {"SceneDialog", "Add", "Puts a point behind the chosen one."},
    {"SceneDialog", "Remove", "Takes the chosen point away."},
    {"SceneDialog", "Up", "Has the chosen point passed earlier."},
    {"SceneDialog", "Down", "Has the chosen point passed later."},
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

// A label of several widgets in one names the one that takes the keyboard for them.
void NameParts(const QDialog& dialog) {
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        const QWidget* whole = label->buddy();
        QWidget* part = whole ? whole->focusProxy() : nullptr;
        if (!part || !whole->isAncestorOf(part)) continue;
        if (part->accessibleName().isEmpty()) part->setAccessibleName(LabelOf(dialog, *whole));
        if (part->toolTip().isEmpty()) part->setToolTip(whole->toolTip());
    }
}

// Two boxes of the toolkit's file dialog have labels that do not belong to them.
void NameFileBoxes(const QDialog& dialog) {
    for (const QString& name : {QStringLiteral("lookIn"), QStringLiteral("fileType")}) {
        auto* label = dialog.findChild<QLabel*>(name + QStringLiteral("Label"));
        auto* box = dialog.findChild<QComboBox*>(name + QStringLiteral("Combo"));
        if (label && box) label->setBuddy(box);
    }
}

}  // namespace

void AddControlTips(QDialog& dialog) {
    NameParts(dialog);
    NameFileBoxes(dialog);
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
