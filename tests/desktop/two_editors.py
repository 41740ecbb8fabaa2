"""What one running editor copies, another one pastes."""

import pathlib

import sounds
from editor_driver import Editor, key


def main():
    clip = sounds.noise(sounds.RATE // 2, seed=5)
    sound = sounds.noise(sounds.RATE, seed=6)
    with Editor(sounds.write_wav("clip.wav", clip)) as source, \
            Editor(sounds.write_wav("target.wav", sound)) as target:
        source.activate()
        key("ctrl+a", "ctrl+c")
        target.activate()
        key("ctrl+End", "ctrl+v")
        target.wait_title("Sonavel - target.wav*")
        target.save_as(pathlib.Path("joined.wav").absolute())
        joined = sounds.read_data("joined.wav")
        assert joined == sound + clip, f"{len(joined)} bytes that are not the sound and the clip"

        # The clip outlives neither its editor nor harms the other one.
        source.activate()
        assert source.quit() == 0
        target.activate()
        key("ctrl+v")
        target.save_as(pathlib.Path("after.wav").absolute())
        after = sounds.read_data("after.wav")
        assert after in (joined, joined + clip), "a paste after the source had left did harm"
        assert target.quit() == 0
    print("pasted what the other editor copied")


main()
