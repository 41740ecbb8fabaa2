"""Kills the editor at random moments: while it edits, computes an effect, saves, records and recovers. What is
left is compared, sample for sample and marker for marker, with a model of the same edits; at most the last
second may be missing. SONAVEL_TEST_KILLS says how often, SONAVEL_TEST_SEED repeats a run."""

import array
import os
import pathlib
import random
import re
import shutil
import subprocess
import time

import sounds
from editor_driver import Editor, bounded, key, type_text, wait_for

KILLS = int(os.environ.get("SONAVEL_TEST_KILLS", "5"))
STATE = pathlib.Path("state").absolute()
RECORDS = STATE / "sonavel" / "recovery"
# What was sent so long before the kill has to be there, with what the keys take to arrive.
CERTAIN_SECONDS = 1.5
CLIP_FRAMES = 4000
LONG_FRAMES = 3_000_000


class RecoveringEditor(Editor):
    """An editor that first asks what to do with what was left, and is told to recover it."""

    def _wait_until_shown(self):
        dialog = self.wait_dialog("^Recover Unsaved Work$")
        key("Return")
        wait_for("the question to close", lambda: dialog not in self.windows())
        super()._wait_until_shown()


class HastyEditor(Editor):
    """One that is killed soon after it was told to recover."""

    pause = 0.0

    def _wait_until_shown(self):
        self.wait_dialog("^Recover Unsaved Work$")
        key("Return")
        time.sleep(self.pause)
        self.process.kill()


class Model:
    """What the edits make of a sound: one state behind each of them."""

    def __init__(self, data):
        self.states = [(data, [])]
        self.sent = []

    def did(self, data, markers):
        self.states.append((data, markers))
        self.sent.append(time.monotonic())

    def allowed(self, killed):
        """The states that may be found after a kill at that time."""
        certain = sum(moment < killed - CERTAIN_SECONDS for moment in self.sent)
        return self.states[certain:]


def start(kind, *files):
    return kind(*files, environment={"XDG_STATE_HOME": str(STATE)})


def left():
    """What the tool lists; one document at most."""
    lines = sounds.batch(f'recover "{RECORDS}"').splitlines() if RECORDS.exists() else []
    assert len(lines) <= 1, lines
    return lines[0] if lines else None


def recovered():
    """The samples and the places of the markers of what was left, from a copy of the records; None for none."""
    if not left():
        return None
    copy = pathlib.Path("copy").absolute()
    shutil.rmtree(copy, ignore_errors=True)
    shutil.copytree(RECORDS, copy)
    told = sounds.batch(f'recover "{copy}"; recover "{copy}" 1; markers; export "{copy}.wav" markers=off')
    markers = sorted(int(place) for place in re.findall(r"^marker \d+ position=(\d+)", told, re.M))
    return sounds.read_data(f"{copy}.wav"), markers


def check_against(model, killed, data, path):
    """The document as one of the states that the model allows; the file as it was."""
    found = recovered()
    allowed = model.allowed(killed)
    state = found or model.states[0]
    assert state in allowed, (
        f"{len(state[0])} bytes and markers {state[1]}, not one of the last {len(allowed)} of"
        f" {len(model.states)} states")
    assert path.read_bytes() == sounds.wav(data), "the file changed without a save"
    return model.states.index(state)


def inverted(data):
    samples = array.array("h", data)
    return array.array("h", (-sample for sample in samples)).tobytes()


def edit_once(source, model, clip):
    """One edit by keys, and what it makes of the newest state."""
    data, markers = model.states[-1]
    frames = len(data) // sounds.FRAME_BYTES
    choice = source.random()
    if choice < 0.7:
        key("ctrl+End", "ctrl+v")
        # A marker at the end moves along with the end.
        model.did(data + clip, [place + CLIP_FRAMES * (place == frames) for place in markers])
    elif choice < 0.85 and frames not in markers:
        key("ctrl+End", "m")
        model.did(data, sorted(markers + [frames]))
    elif len(model.states) > 1:
        key("ctrl+z")
        # What a step before the last undo was, only the history knows: the model keeps to one undo.
        model.did(*model.states[-2])
        key("ctrl+y")
        model.did(data, markers)


def while_editing(source, folder):
    clip = sounds.noise(CLIP_FRAMES, seed=4)
    path = sounds.write_wav(folder / "talk.wav", clip)
    model = Model(clip)
    with start(Editor, path) as editor:
        editor.wait_title("Sonavel - talk.wav")
        key("ctrl+a", "ctrl+c")
        end = time.monotonic() + source.uniform(0.2, 3.0)
        while time.monotonic() < end:
            edit_once(source, model, clip)
        if source.random() < 0.5:
            time.sleep(source.uniform(0, 0.5))
        editor.process.kill()
        killed = time.monotonic()
    return check_against(model, killed, clip, path)


def run_effect(editor, letters):
    """An effect without a dialog, by the letters of its name."""
    def opened():
        # Not while the one before still runs.
        key("ctrl+k")
        return editor.windows("^Find Command$")

    dialog = wait_for("the list of commands", opened)[0]
    editor.wait_dialog("^Find Command$")
    type_text(letters)
    key("Return")
    wait_for("the list of commands to close", lambda: dialog not in editor.windows())


def while_computing(source, folder):
    data = sounds.noise(LONG_FRAMES // 30, seed=5) * 30
    path = sounds.write_wav(folder / "talk.wav", data)
    model = Model(data)
    with start(Editor, path) as editor:
        editor.wait_title("Sonavel - talk.wav")
        end = time.monotonic() + source.uniform(0.3, 4.0)
        while time.monotonic() < end:
            run_effect(editor, "Invert")
            model.did(inverted(data) if len(model.states) % 2 else data, [])
        time.sleep(source.uniform(0, 0.3))
        editor.process.kill()
        killed = time.monotonic()
    # An effect lasts, so what was asked for last may have begun late.
    model.sent = [moment + 1 for moment in model.sent]
    return check_against(model, killed, data, path)


def while_saving(source, folder):
    """The file is whole afterwards, old or new, and nothing lies beside it after the next start."""
    clip = sounds.noise(CLIP_FRAMES, seed=4)
    path = sounds.write_wav(folder / "talk.wav", clip)
    with start(Editor, path) as editor:
        editor.wait_title("Sonavel - talk.wav")
        key("ctrl+a", "ctrl+c", "ctrl+End", "ctrl+v")
        editor.wait_title("Sonavel - talk.wav*")
        key("ctrl+shift+s")
        time.sleep(source.uniform(0, 0.1))
        editor.process.kill()
    assert sounds.read_data(path) in (clip, clip * 2), "a killed save left a torn file"
    had = left() is not None
    with start(RecoveringEditor if had else Editor) as editor:
        wait_for("temporary files to go", lambda: not list(folder.glob(".sonavel-*.tmp")))
        assert editor.quit() == 0
    return int(had)


def recording_programs():
    return subprocess.run(["pactl", "list", "source-outputs"], capture_output=True, text=True,
                          check=True).stdout


def while_recording(source, folder):
    sound = sounds.noise(20 * sounds.RATE, seed=6)
    played = sounds.write_wav(folder / "source.wav", sound)
    with start(Editor) as editor:
        key("ctrl+r")
        dialog = editor.wait_dialog("^Record$")
        key("Tab", "Down", "Tab", "Down", "Return")  # stereo, 16 bits
        editor.wait_dialog_gone(dialog)
        wait_for("the editor to record", lambda: "[sonavel]" in recording_programs())
        began = time.monotonic()
        player = subprocess.Popen(bounded("paplay", played))
        time.sleep(source.uniform(2.0, 6.0))
        editor.process.kill()
        taped = time.monotonic() - began
        player.kill()
        player.wait(timeout=10)
    data, _ = recovered() or (b"", [])
    # The device hands sound over in blocks, and the last second may be lost.
    assert len(data) >= (taped - 2.5) * sounds.SECOND_BYTES, (
        f"{len(data) / sounds.SECOND_BYTES:.2f} s of {taped:.2f} s recorded")
    if taped > 4:
        assert sounds.longest_run(data, sound)[0] >= 0.5, "what was played is not in the recording"
    return int(bool(data))


def while_recovering(source, folder):
    """Recovering changes nothing until it is done: the same can be had after a kill."""
    kept = while_editing(source, folder)
    before = recovered()
    if before is None:
        return 0
    for _ in range(2):
        HastyEditor.pause = source.uniform(0, 0.4)
        with start(HastyEditor):
            pass
        assert recovered() == before, "a kill while recovering cost something"
    return kept


def recover_and_save(folder):
    """The person has back what the tool found, by the dialog; saved, it is offered no more."""
    found = recovered()
    if found is None:
        return
    with start(RecoveringEditor) as editor:
        wait_for("the recovered sound", lambda: editor.title().endswith("*"))
        copy = folder / "recovered.wav"
        editor.save_as(copy)
        assert sounds.read_data(copy) == found[0], "the recovered sound differs"
        assert editor.quit() == 0
    assert left() is None, "saved work is still offered"


KINDS = (while_editing, while_computing, while_saving, while_recording, while_recovering)


def main():
    seed = int(os.environ.get("SONAVEL_TEST_SEED", random.SystemRandom().randrange(1 << 30)))
    print(f"seed {seed}", flush=True)
    source = random.Random(seed)
    edits = dict.fromkeys((kind.__name__ for kind in KINDS), 0)
    for number in range(KILLS):
        kind = KINDS[number % len(KINDS)]
        folder = pathlib.Path(f"work{number}").absolute()
        folder.mkdir()
        edits[kind.__name__] += kind(source, folder)
        print(f"kill {number + 1} of {KILLS}, {kind.__name__.replace('_', ' ')}: {left()}", flush=True)
        # Once for each kind by the dialog; the tool has compared the others.
        if number < len(KINDS):
            recover_and_save(folder)
        shutil.rmtree(STATE, ignore_errors=True)
        shutil.rmtree(folder, ignore_errors=True)
    assert sum(edits.values()) > 0, "no kill came late enough to show anything"
    print(f"{KILLS} kills; had back: {edits}")


main()
