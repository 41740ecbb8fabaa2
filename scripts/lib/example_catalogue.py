"""A catalogue of a thousand sound files, for the pictures of the sample file database."""

import pathlib
import struct

KINDS = {
    "Drums": ("Kick", "Snare", "Hi-hat", "Tom", "Cymbal"),
    "Strings": ("Violin", "Viola", "Cello", "Double bass", "Harp"),
    "Voices": ("Choir", "Whisper", "Laughter", "합창", "속삭임"),
    "Nature": ("Rain", "Thunder", "Brook", "Birdsong", "Surf"),
}
COMMENTS = ("", "close", "from afar", "to be cut", "recorded at night")
ENTRIES = 1000
RATES = (11025, 22050, 44100)


def write_sound(path, rate, channels, frames):
    size = frames * channels
    head = struct.pack("<4sI4s4sIHHIIHH4sI", b"RIFF", 36 + size, b"WAVE", b"fmt ", 16, 1, channels, rate,
                       rate * channels, channels, 8, b"data", size)
    path.write_bytes(head + b"\x80" * size)
    return len(head) + size


def write_catalogue(program_folder, sound_folder):
    """The catalogue "Collection" and its files, of which the very first is then taken away."""
    sound_folder.mkdir()
    names = [(kind, name) for kind, names in KINDS.items() for name in names]
    lines = ["Sonavel sample catalogue 1", "fields\tCategory\tComment"]
    for i in range(ENTRIES):
        kind, name = names[i % len(names)]
        take = i // len(names)
        path = sound_folder / f"{name} {take + 1:02}.wav"
        rate, channels, frames = RATES[take % 3], 1 + take // 2 % 2, 2000 + 7919 * i % 20000
        size = write_sound(path, rate, channels, frames)
        facts = "\t".join(map(str, (rate, frames, channels, 8, size)))
        lines.append(f"file\t{path}\t{facts}\t{kind}\t{COMMENTS[take % len(COMMENTS)]}")
    (sound_folder / "Kick 01.wav").unlink()
    text = "\n".join(lines) + "\n"
    pathlib.Path(program_folder, "Collection.catalogue").write_text(text, encoding="utf-8")
