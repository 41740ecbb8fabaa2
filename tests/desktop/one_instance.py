"""A second start hands its files to the editor that runs already, unless it is to stand alone."""

import os
import pathlib
import subprocess

import sounds
from editor_driver import Editor, bounded, key, wait_for, xdotool


def call(*words):
    program = pathlib.Path(os.environ["SONAVEL_BIN"]) / "sonavel"
    return subprocess.run(bounded(program, *words), capture_output=True, text=True, check=False,
                          timeout=20)


def windows():
    return xdotool("search", "--onlyvisible", "--name", "^Sonavel( - .*)?$").split()


def hand_over():
    one, two, three = (sounds.write_wav(f"{name}.wav", sounds.noise(1000, seed=seed))
                       for seed, name in enumerate(("one", "two", "three")))
    odd = pathlib.Path(os.fsdecode(b"\xb8\xb6.wav"))
    sounds.write_wav(odd, sounds.noise(1000, seed=9))
    with Editor(one, options=()) as editor:
        assert editor.title() == "Sonavel - one.wav", editor.title()
        done = call(two.name, "./" + three.name)
        assert done.returncode == 0, done.stderr
        editor.wait_title("Sonavel - three.wav")
        key("ctrl+w")
        editor.wait_title("Sonavel - two.wav")
        assert call(odd).returncode == 0
        wait_for("the sound with the odd name", lambda: "two.wav" not in editor.title())
        assert len(windows()) == 1, windows()

        # A dialog that is open is finished first.
        key("ctrl+n")
        dialog = editor.wait_dialog("^New")
        assert call(one).returncode == 0
        key("Escape")
        editor.wait_dialog_gone(dialog)
        editor.wait_title("Sonavel - one.wav")

        assert call("--new").returncode == 0
        dialog = editor.wait_dialog("^New")
        key("Escape")
        editor.wait_dialog_gone(dialog)

        with Editor(two) as separate:
            assert separate.title() == "Sonavel - two.wav", separate.title()
            separate.activate()
            assert separate.quit() == 0
        editor.activate()
        assert editor.quit() == 0


def survive_a_killed_editor():
    path = sounds.write_wav("after.wav", sounds.noise(1000, seed=3))
    with Editor(options=()) as editor:
        editor.process.kill()
        editor.process.wait()
    with Editor(path, options=()) as editor:
        assert editor.title() == "Sonavel - after.wav", editor.title()
        assert editor.quit() == 0


def answer_without_a_display():
    bare = {name: value for name, value in os.environ.items()
            if name not in ("DISPLAY", "WAYLAND_DISPLAY")}
    program = pathlib.Path(os.environ["SONAVEL_BIN"]) / "sonavel"
    for words, status, lines in ((["--help"], 0, 8), (["--version"], 0, 1), ([], 1, 0)):
        done = subprocess.run([program, *words], capture_output=True, text=True, check=False,
                              timeout=20, env=bare)
        assert done.returncode == status, (words, done)
        assert len(done.stdout.splitlines()) >= lines, (words, done.stdout)
        assert len(done.stderr.splitlines()) == (1 if status else 0), (words, done.stderr)
    mistaken = call("--no-such-option")
    assert mistaken.returncode == 2 and "--no-such-option" in mistaken.stderr, mistaken


def main():
    answer_without_a_display()
    hand_over()
    survive_a_killed_editor()


main()
