"""State folders in which unsaved work cannot be kept: the status bar says what cannot be promised, and the
editor edits, undoes and saves all the same."""

import contextlib
import os
import pathlib
import shutil
import subprocess

import sounds
import spoken
from editor_driver import Editor, key, wait_for

CLIP_FRAMES = 100_000
PASTES = 8
NOBODY = 65534


def ran(*command):
    return subprocess.run(command, capture_output=True, check=False).returncode == 0


def mounted(stack, folder, options):
    """Whether the folder is a disk of its own until the stack is left."""
    if not ran("mount", "-t", "tmpfs", "-o", options, "none", folder):
        return False
    stack.callback(ran, "umount", "--lazy", folder)
    return True


def full_disk(stack, state):
    return mounted(stack, state, "size=2m")


def read_only(stack, state):
    if os.geteuid() == 0:
        return mounted(stack, state, "ro")
    state.chmod(0o500)
    stack.callback(state.chmod, 0o700)
    return True


def of_another_user(_, state):
    records = state / "sonavel" / "recovery"
    records.mkdir(parents=True)
    if os.geteuid() != 0:
        return False
    os.chown(records, NOBODY, NOBODY)
    return True


CASES = [
    (full_disk, "The disk is full: unsaved work is no longer kept for recovery."),
    (read_only, "The recovery folder cannot be written: unsaved work is not kept for recovery."),
    (of_another_user, "The recovery folder cannot be written: unsaved work is not kept for recovery."),
]


def said(application, text):
    return any(item.role == "label" and item.name == text
               for window in spoken.windows_of(application) for item, _ in window.walk())


def keep_picture(editor, name):
    """Where SONAVEL_PICTURES names a folder, what the person sees."""
    folder = os.environ.get("SONAVEL_PICTURES")
    if folder:
        subprocess.run(["import", "-silent", "-window", editor.window, f"{folder}/{name}.png"], check=False)


def work_in(state, name, text):
    clip = sounds.noise(CLIP_FRAMES, seed=7)
    path = sounds.write_wav(pathlib.Path(f"{name}.wav").absolute(), clip)
    with Editor(path, environment={"XDG_STATE_HOME": str(state)}) as editor:
        editor.wait_title(f"Sonavel - {name}.wav")
        key("ctrl+a", "ctrl+c", "ctrl+End", *["ctrl+v"] * PASTES)
        application = spoken.program()
        wait_for(f"the status bar to say {text!r}", lambda: said(application, text))
        keep_picture(editor, name)
        key("ctrl+z", "ctrl+z", "ctrl+y")
        editor.save_as(path.with_name(f"{name}-saved.wav"))
        assert editor.quit() == 0
    assert sounds.read_data(f"{name}-saved.wav") == clip * PASTES, "the saved sound differs"


def main():
    tried = []
    for make, text in CASES:
        name = make.__name__
        state = pathlib.Path(f"state-{name}").absolute()
        state.mkdir()
        with contextlib.ExitStack() as stack:
            if make(stack, state):
                work_in(state, name, text)
                tried.append(name)
        shutil.rmtree(state, ignore_errors=True)
    assert tried, "no such folder can be made here"
    print("worked and said so: " + ", ".join(tried))


main()
