"""Kills the editor at random moments, while it edits and while it saves; the next start has the work back."""

import os
import pathlib
import random
import re
import time

import sounds
from editor_driver import Editor, key, wait_for

KILLS = 10
STATE = pathlib.Path("state").absolute()
RECORDS = STATE / "sonavel" / "recovery"
CLIP_FRAMES = 4000


class RecoveringEditor(Editor):
    """An editor that first asks what to do with what was left, and is told to recover it."""

    def _wait_until_shown(self):
        dialog = self.wait_dialog("^Recover Unsaved Work$")
        key("Return")
        wait_for("the question to close", lambda: dialog not in self.windows())
        super()._wait_until_shown()


def start(kind, *files):
    return kind(*files, environment={"XDG_STATE_HOME": str(STATE)})


def left():
    """How many frames and edits the one document has that was left; nothing when none was."""
    lines = sounds.batch(f'recover "{RECORDS}"').splitlines() if RECORDS.exists() else []
    assert len(lines) <= 1, lines
    found = re.search(r"frames=(\d+) edits=(\d+)", lines[0]) if lines else None
    return (int(found[1]), int(found[2])) if found else None


def kill_while_editing(source, path, clip):
    """Pastes the clip again and again, kills in the midst, and gives what was kept."""
    certain = sent = 0
    with start(Editor, path) as editor:
        editor.wait_title("Sonavel - talk.wav")
        key("ctrl+a", "ctrl+c")
        end = time.monotonic() + source.uniform(0.2, 3.0)
        sent_at = []
        while time.monotonic() < end:
            key("ctrl+End", "ctrl+v")
            sent_at.append(time.monotonic())
        if source.random() < 0.5:
            time.sleep(source.uniform(0, 0.5))
        editor.process.kill()
        killed = time.monotonic()
        sent = len(sent_at)
        certain = sum(moment < killed - 1.5 for moment in sent_at)
    kept = left()
    pasted = kept[1] if kept else 0
    assert certain <= pasted <= sent, f"{pasted} of {sent} edits, {certain} of them older than a second"
    if kept:
        assert kept[0] == CLIP_FRAMES * (1 + pasted), kept
    assert path.read_bytes() == sounds.wav(clip), "the file changed without a save"
    return pasted


def recover_and_save(path, clip, pasted):
    with start(RecoveringEditor) as editor:
        editor.wait_title("Sonavel - talk.wav*")
        copy = pathlib.Path("recovered.wav").absolute()
        copy.unlink(missing_ok=True)
        editor.save_as(copy)
        assert sounds.read_data(copy) == clip * (1 + pasted), "the recovered sound differs"
        assert editor.quit() == 0
    assert left() is None, "saved work is still offered"


def kill_while_saving(source, path, clip):
    """The file is whole afterwards, old or new, and nothing lies beside it after the next start."""
    with start(Editor, path) as editor:
        editor.wait_title("Sonavel - talk.wav")
        key("ctrl+a", "ctrl+c", "ctrl+End", "ctrl+v")
        editor.wait_title("Sonavel - talk.wav*")
        key("ctrl+shift+s")
        time.sleep(source.uniform(0, 0.1))
        editor.process.kill()
    assert sounds.read_data(path) in (clip, clip * 2), "a killed save left a torn file"
    kind = RecoveringEditor if left() else Editor
    with start(kind) as editor:
        wait_for("temporary files to go", lambda: not list(path.parent.glob(".sonavel-*.tmp")))
        assert editor.quit() == 0


def main():
    seed = int(os.environ.get("SONAVEL_TEST_SEED", random.SystemRandom().randrange(1 << 30)))
    print(f"seed {seed}")
    source = random.Random(seed)
    folder = pathlib.Path("work")
    folder.mkdir()
    clip = sounds.noise(CLIP_FRAMES, seed=4)
    edits = 0
    for kill in range(KILLS):
        path = sounds.write_wav((folder / "talk.wav").absolute(), clip)
        if kill % 3 == 2:
            kill_while_saving(source, path, clip)
            continue
        pasted = kill_while_editing(source, path, clip)
        edits += pasted
        if pasted:
            recover_and_save(path, clip, pasted)
    assert edits > 0, "no kill came late enough to show anything"
    print(f"{KILLS} kills, {edits} unsaved edits had back")


main()
