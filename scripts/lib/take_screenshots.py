"""Takes the pictures of the real program that PICTURES lists.
Usage: take_screenshots.py OUT-FOLDER SCALE POINTS [PICTURE]...

Run by scripts/screenshots on a private desktop.
"""

import dataclasses
import os
import pathlib
import subprocess
import sys
import time

import example_catalogue
import example_takes
from editor_driver import Editor, frame_extents, key, place_of, settled_pixels, type_text, xdotool

SAMPLES = pathlib.Path(__file__).resolve().parents[2] / "samples"
EDITOR_SIZE = (1200, 800)
USUAL_POINTS = 9  # of texts on a desktop that asks for nothing else

WHOLE = ""  # the main frame with whatever lies over it


@dataclasses.dataclass(frozen=True)
class Picture:
    """What to press before a window is taken, and after it, in the same running program."""

    name: str
    # "?Title" waits for the dialog of that title, "=name" types the path of a take, "~" waits until a
    # button pressed by key has sprung back.
    keys: str
    window: str = WHOLE  # a pattern of the window's title
    after: str = "Escape"


PICTURES = [
    Picture("editor", "", after=""),
    Picture("menu-file", "alt+f", after="Escape Escape"),
    Picture("menu-edit", "alt+e", after="Escape Escape"),
    Picture("menu-view", "alt+v", after="Escape Escape"),
    Picture("menu-control", "alt+c", after="Escape Escape"),
    Picture("menu-window", "alt+w", after="Escape Escape"),
    Picture("new", "ctrl+n", "^New$"),
    Picture("save-as", "F12", "^Save As$"),
    Picture("export", "ctrl+shift+x", "^Export$"),
    Picture("import", "ctrl+shift+o ?Import =take3.wav Return ~ ?Import", "^Import$"),
    Picture("refused-file", "ctrl+o ?Open =take3.wav Return ~ ?Sonavel$", "^Sonavel$"),
    Picture("about", "alt+h a", "^About"),
    Picture("go-to-cursor", "ctrl+g", "Go"),
    Picture("marker-add", "alt+e k Down Down Down Down Down Return", "^Marker"),
    Picture("marker-list", "alt+e k Down Down Down Down Down Down Down Return", "^Marker"),
    Picture("mix", "ctrl+c ctrl+m", "Mix"),
    Picture("crossfade-mix", "ctrl+s", "Crossfade"),
    Picture("paste-replicate", "ctrl+l", "Replicate"),
    Picture("clipboard-contents", "alt+e o", "Clipboard"),
    Picture("record", "ctrl+r", "^Record$"),
    Picture("zoom-user", "alt+v Down Down Down Return", "Zoom"),
    Picture("zoomed-level", "Home shift+Up shift+Up", after="ctrl+0"),
    Picture("zoomed-time", "ctrl+Home ctrl+Right Up Up Up Up Up Up Up Up", after="ctrl+0"),
    Picture("convert-channels", "ctrl+n ?New Return ctrl+v ?경고 Return", "^Convert", after="Escape ctrl+w"),
    Picture("menu-effects", "alt+c Right", after="Escape Escape"),
    Picture("volume", "alt+c Right v", "^Volume"),
    Picture("panpot", "alt+c Right p", "^Panpot"),
    Picture("dynamics", "alt+c Right d", "^Dynamics"),
    Picture("equalizer", "alt+c Right g", "^Graphic EQ"),
    Picture("reverb", "alt+c Right r", "^Reverb"),
    Picture("flanger", "alt+c Right f", "^Flanger"),
    Picture("modulator", "ctrl+k ?Find m o d u l Return", "^Modulator"),
    Picture("palette", "ctrl+k ?Find e x p", "^Find Command"),
    Picture("keys", "alt+e y", "^Keys"),
    Picture("run-script", "ctrl+k ?Find r u n space s c r Return", "^Run Script"),
    Picture("fade-in", "ctrl+k ?Find f a d e Return", "^Fade"),
    Picture("normalise", "ctrl+k ?Find n o r m Return", "^Normalise"),
    Picture("tempo", "ctrl+k ?Find t e m p o Return", "^Tempo"),
    Picture("pitch", "ctrl+k ?Find p i t c h Return", "^Pitch"),
    Picture("convert", "ctrl+k ?Find c o n v e r t Return", "^Convert"),
    Picture("echo", "ctrl+k ?Find e c h o Return", "^Echo"),
    Picture("noise-reduce", "ctrl+k ?Find n o i s e space r e Return", "^Noise"),
    Picture("find-pauses", "ctrl+k ?Find p a u s e s Return", "^Find Pauses"),
    Picture("remove-pauses", "ctrl+k ?Find p a u s e s Return ~ alt+d Down Down ~", "^Find Pauses"),
    Picture("export-regions", "ctrl+k ?Find r e g i o n s Return", "^Export Regions"),
    Picture("spectrogram", "ctrl+alt+2 Down", after="ctrl+alt+1"),
    Picture("spectrogram-both", "ctrl+alt+3", after="ctrl+alt+1"),
    Picture("spectrogram-settings", "ctrl+alt+2 ctrl+k ?Find s p e c t r o g r a m space s Return",
            "^Spectrogram", after="Escape ctrl+alt+1"),
    Picture("overview", "Up Up Up ctrl+k ?Find o v e r v i e w Return ~",
            after="ctrl+0 ctrl+k ?Find o v e r v i e w Return ~"),
    Picture("menu-3d", "alt+d", after="Escape Escape"),
    Picture("3d-positional-system", "alt+d s", "Positional"),
    Picture("3d-positional-user", "alt+d u", "Positional"),
    Picture("3d-moving-system", "alt+d y", "Moving"),
    Picture("3d-moving-user", "alt+d e ?User-Defined alt+a ~ alt+e ctrl+a 4 0 Tab alt+a ~ alt+a ~"
            " alt+e ctrl+a minus 2 0 Tab", "Moving"),
    Picture("3d-path-spiral", "alt+d e ?User-Defined alt+n ?Shape Down Tab ctrl+a 3 0 0 Tab 1 0 0 Tab 3 Return ~"
            " alt+h ~", "Moving"),
    Picture("3d-shape", "alt+d e ?User-Defined alt+n ?Shape", "^Shape", after="Escape Escape"),
    Picture("3d-scene", "alt+d n ?Scene Tab Tab Tab Tab Tab alt+a ~ alt+a ~", "^Scene$"),
    Picture("3d-scene-live", "alt+d n ?Scene ctrl+l ~ ~", "^Scene$"),
    Picture("3d-place-many", "alt+d m", "^Place Many"),
    Picture("3d-crosstalk", "alt+d c", "^Cross Talk"),
    Picture("preferences-display", "ctrl+comma", "^Preference"),
    Picture("preferences-general", "ctrl+comma ?Preference Right", "^Preference"),
    Picture("preferences-grid", "ctrl+comma ?Preference Right Right", "^Preference"),
    Picture("preferences-wave", "ctrl+comma ?Preference Right Right Right", "^Preference"),
    Picture("preferences-3d", "ctrl+comma ?Preference Right Right Right Right", "^Preference"),
    Picture("preferences-keys", "ctrl+comma ?Preference Right Right Right Right Right", "^Preference"),
    Picture("preferences-spectrogram",
            "ctrl+comma ?Preference Right Right Right Right Right Right", "^Preference"),
    Picture("properties-general", "alt+Return", "^Properties"),
    Picture("properties-format", "alt+Return ?Properties Right", "^Properties"),
    Picture("properties-statistics", "alt+Return ?Properties Right Right", "^Properties"),
    Picture("properties-markers", "alt+Return ?Properties Right Right Right", "^Properties"),
    Picture("sample-database", "alt+w Up Up Up Return", "^Sample File Database", after="alt+F4"),
    Picture("tabs", "alt+w t", after="alt+w t"),
    Picture("save-changes", "ctrl+a Delete ctrl+w", "^Sonavel$"),
]


def place_with_frame(window):
    """Where the window and the window manager's frame lie on the screen: "WxH+X+Y"."""
    x, y, width, height = place_of(window)
    left, right, top, bottom = frame_extents(window)
    return f"{width + left + right}x{height + top + bottom}+{x - left}+{y - top}"


class Photographer:
    def __init__(self, editor, folder, scale, points):
        self.editor, self.folder, self.scale = editor, folder, scale
        self.suffix = f"@{scale:g}x" + (f"-{points:g}pt" if points != USUAL_POINTS else "")
        self.takes = pathlib.Path(os.environ["TMPDIR"]) / "Takes"
        if not self.takes.exists():
            example_takes.write_takes(self.takes)

    def lay_out(self):
        """Two sounds, one above the other; the upper one with a selection between its markers."""
        size = [round(side * self.scale) for side in EDITOR_SIZE]
        xdotool("windowsize", "--sync", self.editor.window, *size)
        self.editor.open(SAMPLES / "logo.wav")
        self.editor.wait_title("Sonavel - logo.wav")
        key("alt+w", "h")
        settled_pixels(self.editor.window)
        key("Up", "Up", "ctrl+F6")
        self.editor.wait_title("Sonavel - welcome.wav")
        self.select_by_double_click()

    def select_by_double_click(self):
        x, y, width, height = place_of(self.editor.window)
        xdotool("mousemove", x + round(width * 0.35), y + height // 3, "click", "--repeat", 2,
                "--delay", 60, 1)
        xdotool("mousemove", x + width // 2, y + height - 4)

    def take(self, picture):
        self.press(picture.keys)
        window = self.editor.wait_dialog(picture.window) if picture.window else self.editor.window
        settled_pixels(window)
        time.sleep(0.2)
        path = self.folder / f"{picture.name}{self.suffix}.png"
        if picture.window:
            self._import(path, "-frame", "-window", window)
        else:
            self._import(path, "-window", "root", "-crop", place_with_frame(window), "+repage")
        print(path)
        self.press(picture.after)
        if picture.window:
            self.editor.wait_dialog_gone(window)

    def press(self, keys):
        for word in keys.split():
            if word.startswith("?"):
                self.editor.activate(self.editor.wait_dialog(f"^{word[1:]}"))
            elif word.startswith("="):
                type_text(str(self.takes / word[1:]))
            elif word == "~":
                time.sleep(0.6)
            else:
                key(word)

    @staticmethod
    def _import(path, *words):
        subprocess.run(["import", "-silent", *words, str(path)], check=True, timeout=30)


class AskingEditor(Editor):
    """One that begins with the question what to do with unsaved work."""

    def _wait_until_shown(self):
        self.question = self.wait_dialog("^Recover Unsaved Work$")


# Sounds with unsaved edits, a script's each.
LEFT_WORK = (
    f'open "{SAMPLES}/welcome.wav"; select 0 20000; fade-in; select-all; normalise',
    f'open "{SAMPLES}/logo.wav"; convert-channels 2; select-all; echo',
    "new rate=44100 channels=2 bits=16; insert-silence 44100",
)


def take_recovery(folder, scale):
    """The question at a start behind which work lies; the records are written by the tool."""
    state = pathlib.Path(os.environ["TMPDIR"]) / f"state{scale:g}"
    tool = pathlib.Path(os.environ["SONAVEL_BIN"]) / "sonavel-batch"
    for script in LEFT_WORK:
        subprocess.run([tool, "--recover", state / "sonavel" / "recovery", "-c", script], check=True)
    settings = {"QT_SCALE_FACTOR": str(scale), "XDG_STATE_HOME": str(state)}
    with AskingEditor(environment=settings) as editor:
        settled_pixels(editor.question)
        path = folder / f"recovery@{scale:g}x.png"
        subprocess.run(["import", "-silent", "-frame", "-window", editor.question, path], check=True)
        print(path)


def desktop_with_font(points):
    """The environment of a desktop with texts of that size, of the kind whose settings the toolkit itself reads."""
    if points == USUAL_POINTS:
        return {}
    settings = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "kdeglobals"
    settings.write_text(f"[General]\nfont=DejaVu Sans,{points:g},-1,5,50,0,0,0,0,0\n")
    return {"XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5"}


def main():
    folder, scale, points = pathlib.Path(sys.argv[1]), float(sys.argv[2]), float(sys.argv[3])
    wanted = set(sys.argv[4:])
    if not wanted or "recovery" in wanted:
        take_recovery(folder, scale)
    if wanted == {"recovery"}:
        return
    sounds = pathlib.Path(os.environ["TMPDIR"]) / "Collection"
    if not sounds.exists():
        example_catalogue.write_catalogue(os.environ["SONAVEL_BIN"], sounds)
    look = {"QT_SCALE_FACTOR": str(scale), **desktop_with_font(points)}
    with Editor(SAMPLES / "welcome.wav", environment=look) as editor:
        photographer = Photographer(editor, folder, scale, points)
        photographer.lay_out()
        for picture in PICTURES:
            if not wanted or picture.name in wanted:
                photographer.take(picture)


main()
