"""A sound is halved, cut and saved by keys alone, with a screen reader that says each step."""

import array
import os
import pathlib
import re
import subprocess
import time

import sounds
import spoken
from editor_driver import DriveError, Editor, bounded, key, type_text, wait_for

SILENT_SECONDS = 0.4
READER_SECONDS = 40.0
LOG = pathlib.Path("reader.log").absolute()


class Reader:
    """The desktop's screen reader, and what it has said since it was last asked."""

    def __init__(self):
        self._write_customisation()
        # It is a Python program itself, and would find this folder's modules among its own.
        own = {name: value for name, value in os.environ.items() if name != "PYTHONPATH"}
        self._process = subprocess.Popen(
            bounded("orca", "--replace", "--debug-file", LOG, "--disable", "braille"),
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=own)
        self._heard = 0

    @staticmethod
    def _write_customisation():
        """Has the reader write each line of its log as soon as it is said."""
        folder = pathlib.Path(os.environ["XDG_DATA_HOME"]) / "orca"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "orca-customizations.py").write_text(
            f"from orca import debug\ndebug.debugFile = open({str(LOG)!r}, 'w', buffering=1)\n")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.kill()
        self._process.wait(timeout=20)

    def _said(self):
        text = LOG.read_text(errors="replace") if LOG.exists() else ""
        return re.findall(r"SPEECH OUTPUT: '(.*?)'(?: *\{|$)", text, re.DOTALL | re.MULTILINE)

    def wait_says(self, *parts):
        """Waits until all of this has been said, in this order, since the last time."""
        def said():
            rest = iter(enumerate(self._said()[self._heard:], self._heard))
            last = None
            for part in parts:
                last = next((i for i, what in rest if part in what), None)
                if last is None:
                    return False
            self._heard = last + 1
            return True

        try:
            wait_for(f"the reader to say {parts}", said, READER_SECONDS)
        except DriveError as error:
            raise DriveError(f"{error}; it said {self._said()[self._heard:]}") from error
        self.wait_until_silent()

    def wait_until_silent(self):
        """It still works on what has happened; a person listens to the end before the next key."""
        size, since = LOG.stat().st_size, time.monotonic()
        while time.monotonic() - since < SILENT_SECONDS:
            time.sleep(0.05)
            if LOG.stat().st_size != size:
                size, since = LOG.stat().st_size, time.monotonic()


def type_over(reader, text):
    """Each key goes through the reader, which is slow where the machine is."""
    for step in (lambda: key("ctrl+a"), lambda: type_text(text), lambda: key("Return")):
        step()
        reader.wait_until_silent()


def halve(reader):
    key("ctrl+k")
    reader.wait_says("Find Command dialog")
    type_text("volume")
    reader.wait_says("Effects > Volume...")
    key("Return")
    reader.wait_says("Volume dialog", "Volume slider 100", "halves it")
    key("Next")
    reader.wait_says("90")
    key("Tab")
    reader.wait_says("In percent")
    type_over(reader, "50")


def main():
    sound = sounds.noise(2 * sounds.RATE, seed=8)
    path = sounds.write_wav("spoken.wav", sound)
    with Reader() as reader, Editor(path) as editor:
        spoken.program()
        reader.wait_says("Screen reader on", "Sonavel - spoken.wav frame", "spoken.wav frame")
        # What got the keyboard before the reader listened, it does not know of.
        key("ctrl+k")
        reader.wait_says("Find Command dialog")
        key("Escape")
        reader.wait_says("spoken.wav canvas")
        key("ctrl+End")
        reader.wait_says("cursor 00:00:02.000")
        key("ctrl+a")
        reader.wait_says("selected 00:00:00.000 - 00:00:02.000")
        halve(reader)
        editor.wait_title("Sonavel - spoken.wav*")
        reader.wait_says("Sonavel - spoken.wav")
        key("ctrl+k")
        reader.wait_says("Find Command dialog")
        type_text("undo")
        reader.wait_says("Edit > Undo")
        key("Escape")
        reader.wait_says("spoken.wav canvas")
        key("F12")
        reader.wait_says("Save As dialog", "File name")
        type_over(reader, "half.wav")
        editor.wait_title("Sonavel - half.wav")
        reader.wait_says("half.wav")
        assert editor.quit() == 0
    loudest = max(abs(sample) for sample in array.array("h", sounds.read_data("half.wav")))
    whole = max(abs(sample) for sample in array.array("h", sound))
    assert whole // 2 - 1 <= loudest <= whole // 2 + 1, (loudest, whole)


main()
