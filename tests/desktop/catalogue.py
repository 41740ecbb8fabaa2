"""The sample file database takes the keys of its buttons while the filter has the keyboard."""

import os
import pathlib

import sounds
from editor_driver import Editor, key, settled_pixels, type_text, wait_for

OPENED = pathlib.Path("opened.txt")


def stand_in_for_the_file_manager():
    """A folder for PATH, in which the program that shows folders notes them instead."""
    folder = pathlib.Path("bin").absolute()
    folder.mkdir()
    program = folder / "xdg-open"
    program.write_text(f'#!/bin/sh\necho "$1" >"{OPENED.absolute()}"\n', encoding="utf-8")
    program.chmod(0o755)
    return {"PATH": f"{folder}:{os.environ['PATH']}"}


def write_catalogue(path):
    size = path.stat().st_size
    text = f"Sonavel sample catalogue 1\nfile\t{path}\t{sounds.RATE}\t100\t2\t16\t{size}\n"
    pathlib.Path(os.environ["SONAVEL_BIN"], "Test.catalogue").write_text(text, encoding="utf-8")


def main():
    folder = pathlib.Path("sounds").absolute()
    folder.mkdir()
    write_catalogue(sounds.write_wav(folder / "a.wav", sounds.noise(100, seed=3)))
    with Editor(environment=stand_in_for_the_file_manager()) as editor:
        key("alt+w", "Up", "Return")
        catalogue = editor.wait_dialog("^Sample File Database$")
        type_text("a")
        settled_pixels(catalogue)
        key("ctrl+d")
        wait_for("the sound's folder to be shown", OPENED.exists)
        shown = wait_for("the folder's name", lambda: OPENED.read_text(encoding="utf-8").strip())
        assert shown.endswith(str(folder)), shown
        key("ctrl+e")
        fields = editor.wait_dialog("^Fields$")
        key("Escape")
        wait_for("the dialog to close", lambda: fields not in editor.windows())
        assert editor.quit() == 0
    print(f"{shown} was shown")


if __name__ == "__main__":
    main()
