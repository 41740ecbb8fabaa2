"""The manual's tasks, done as their pages say: by keys and mouse alone, each seen in what comes of it."""

import pathlib
import os
import re
import subprocess

import sounds
import spoken
from editor_driver import Editor, key, place_of, type_text, wait_for, xdotool

MANUAL = pathlib.Path(__file__).resolve().parents[2] / "docs" / "manual"


class Task:
    """One sound open in an editor of its own, and what can be heard of it."""

    def __init__(self, name, seconds=4):
        self.path = sounds.write_wav(name, sounds.noise(seconds * sounds.RATE, seed=len(name)))

    def __enter__(self):
        self.editor = Editor(self.path).__enter__()
        self.frame = next(it for it in spoken.windows_of(spoken.program()) if self.path.name in it.name)
        self.wave = self.frame.find("canvas", self.path.name)
        return self

    def __exit__(self, *failure):
        if not failure[0]:
            assert self.editor.quit() == 0
        self.editor.__exit__(*failure)

    def menu(self, *names):
        """Gives the command that stands there in the menus; fails where the manual names another place."""
        item = next(it for it in self.frame.children() if it.role == "menu bar")
        for name in names:
            item = next(it for it, _ in item.walk() if it.role == "menu item" and it.name.rstrip(".…") == name)
        item.press()

    def wait_said(self, part):
        wait_for(f"{part!r} to be said of the waveform", lambda: part in self.wave.description)

    def at(self, share):
        x, y, width, height = place_of(self.editor.window)
        return x + round(width * share), y + height // 2

    def markers(self):
        return [it.name for it in self.wave.children() if it.name.startswith("Marker")]


def cut_speech():
    with Task("speech.wav") as task:
        key("space")
        task.wait_said("Playing")
        key("space")
        wait_for("silence", lambda: "Playing" not in task.wave.description)
        key("Up", "Up")
        spoken.select_by_drag(task.wave, task.at(0.3), task.at(0.5))
        task.menu("Edit", "Snap to Zero Crossings")
        task.menu("Control", "Preview cut/cursor")
        task.wait_said("Playing")
        key("space")
        key("Delete")
        task.editor.wait_title("Sonavel - speech.wav*")
        spoken.select_by_drag(task.wave, task.at(0.3), task.at(0.4))
        key("ctrl+x")
        xdotool("mousemove", *task.at(0.6), "click", 1)
        key("ctrl+v")
        key("ctrl+a", "ctrl+c", "ctrl+e")
        wait_for("a window of its own", lambda: "speech" not in task.editor.title())


def make_louder():
    with Task("loud.wav") as task:
        task.menu("Effects", "Volume")
        dialog = task.editor.wait_dialog("^Volume$")
        key("Tab", "ctrl+a")
        type_text("200")
        key("Return")
        task.editor.wait_dialog_gone(dialog)
        task.editor.wait_title("Sonavel - loud.wav*")
        key("ctrl+alt+i", "ctrl+alt+o")
        task.menu("Effects", "Level", "Normalise")
        dialog = task.editor.wait_dialog("^Normalise$")
        key("Return")
        task.editor.wait_dialog_gone(dialog)
        task.menu("File", "Properties")
        task.editor.wait_dialog("^Properties")
        key("Escape")


def set_chapters():
    with Task("chapters.wav") as task:
        xdotool("mousemove", *task.at(0.3), "click", 1)
        key("m")
        wait_for("a marker", lambda: len(task.markers()) == 1)
        xdotool("mousemove", *task.at(0.5), "click", 1)
        key("shift+m")
        type_text("Second")
        key("Return")
        wait_for("a marker with its name", lambda: "Marker Second" in task.markers())
        key("alt+Up")
        # The window manager of the tests has the key for itself.
        task.menu("Edit", "Select to Next Marker")
        task.wait_said("selected")
        xdotool("mousemove", *task.at(0.4), "click", "--repeat", 2, "--delay", 60, 1)
        key("ctrl+e")
        wait_for("the chapter as a sound of its own", lambda: "chapters" not in task.editor.title())


def record():
    with Editor() as editor:
        key("ctrl+r")
        editor.wait_dialog("^Record$")
        key("Return")
        wait_for("the take", lambda: re.search(r"Sonavel - \S", editor.title()))
        key("space")


def place_in_space():
    with Task("space.wav") as task:
        task.menu("3D Sound", "System Defined Positional Sound")
        dialog = task.editor.wait_dialog("System Defined")
        key("ctrl+a")
        type_text("12")
        key("Return")
        task.editor.wait_dialog_gone(dialog)
        task.editor.wait_title("Sonavel - space.wav*")


def many_files():
    """The page's own lines, in a folder with two files."""
    folder = pathlib.Path("many")
    folder.mkdir()
    for name in ("one", "two words"):
        sounds.write_wav(folder / f"{name}.wav", sounds.noise(100, seed=4))
    page = (MANUAL / "many-files.md").read_text(encoding="utf-8")
    lines = "\n".join(line[4:] for line in page.splitlines() if line.startswith("    "))
    program = {"PATH": f"{os.environ['SONAVEL_BIN']}:{os.environ['PATH']}"}
    subprocess.run(["bash", "-ec", lines], cwd=folder, env={**os.environ, **program}, check=True, timeout=60)
    assert sorted(path.name for path in folder.glob("*.flac")) == ["one.flac", "two words.flac"]


def main():
    for task in (cut_speech, make_louder, set_chapters, record, place_in_space, many_files):
        print(task.__name__)
        task()


main()
