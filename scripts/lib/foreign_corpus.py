"""Writes a small sound file of every format and depth that Import reads, with markers, tags and chapters.

Usage: foreign_corpus.py FOLDER. Needs sox and ffmpeg.
"""

import pathlib
import struct
import subprocess
import sys

RATE, FRAMES = 44100, 4500

# Name and the words that sox or ffmpeg writes it with.
BY_SOX = {
    "u8.wav": "-b 8 -e unsigned", "s16.wav": "-b 16 -e signed", "s24.wav": "-b 24 -e signed",
    "s32.wav": "-b 32 -e signed", "f32.wav": "-b 32 -e float", "f64.wav": "-b 64 -e float",
    "alaw.wav": "-e a-law", "mulaw.wav": "-e mu-law", "ima.wav": "-e ima-adpcm", "ms.wav": "-e ms-adpcm",
    "gsm.wav": "-e gsm-full-rate -r 8000", "s8.aiff": "-b 8", "s16.aiff": "-b 16", "s24.aiff": "-b 24",
    "s32.aiff": "-b 32", "f32.aifc": "-b 32 -e float", "f64.aifc": "-b 64 -e float", "alaw.aifc": "-e a-law",
    "s16.au": "-b 16", "s24.au": "-b 24", "f32.au": "-e float -b 32", "mulaw.au": "-e mu-law", "alaw.au": "-e a-law",
    "s16.flac": "-b 16", "s24.flac": "-b 24", "s8.flac": "-b 8", "take.ogg": "", "six.wav": "-c 6 -b 24",
    "s16.caf": "-b 16", "s24.w64": "-b 24", "raw.gsm": "-c 1 -r 8000", "raw.vox": "-c 1 -r 8000",
}
BY_FFMPEG = {
    "rf64.wav": "-c:a pcm_s24le -rf64 always", "bext.wav": "-c:a pcm_s24le -write_bext 1 -metadata description=x",
    "f32.w64": "-c:a pcm_f32le", "f64.caf": "-c:a pcm_f64be", "alac.caf": "-c:a alac", "ulaw.caf": "-c:a pcm_mulaw",
    "chapters.opus": "-c:a libopus -ar 48000", "chapters.ogg": "-c:a libvorbis", "chapters.mp3": "-c:a libmp3lame",
    "s16le.aifc": "-f aiff -c:a pcm_s16le", "fl.oga": "-f ogg -c:a flac", "mp3.wav": "-f wav -c:a libmp3lame",
    "mp2.mp2": "-c:a mp2", "chapters.m4a": "-c:a aac", "alac.m4a": "-c:a alac", "sound.wma": "-c:a wmav2",
    "sound.wv": "-c:a wavpack", "sound.g722": "-c:a g722 -ar 16000 -ac 1", "film.mkv": "-c:a libopus -ar 48000",
    "film.mp4": "-c:a aac", "film.avi": "-c:a libmp3lame", "sound.aac": "-f adts -c:a aac", "sound.tta": "-c:a tta",
    "film.ogv": "-f ogg -c:a libvorbis", "sound.ac3": "-c:a ac3",
}
CHAPTERS = """;FFMETADATA1
title=A title
artist=Somebody
comment=Several\\
lines
[CHAPTER]
TIMEBASE=1/1000
START=0
END=10
title=One
[CHAPTER]
TIMEBASE=1/1000
START=10
END=20
title=Two
"""


def chunk(name, content):
    return name + struct.pack("<I", len(content)) + content + b"\0" * (len(content) % 2)


def cue_chunks():
    points = [(1, 100), (2, 500), (7, 1100)]
    cue = struct.pack("<I", len(points)) + b"".join(
        struct.pack("<II4sIII", ident, at, b"data", 0, 0, at) for ident, at in points)
    labels = b"adtl" + chunk(b"ltxt", struct.pack("<II4sHHHH", 2, 300, b"rgn ", 0, 0, 0, 0))
    labels += b"".join(chunk(b"labl", struct.pack("<I", ident) + name + b"\0")
                       for ident, name in ((1, b"One"), (2, "둘".encode()), (7, b"\xb5\xd1")))
    labels += chunk(b"note", struct.pack("<I", 1) + b"a note\0")
    sampler = struct.pack("<9I", 0, 0, 22675, 60, 0, 0, 0, 1, 0) + struct.pack("<6I", 1, 0, 200, 800, 0, 0)
    info = b"INFO" + chunk(b"INAM", b"Title\0") + chunk(b"IART", b"Artist\0")
    return (chunk(b"cue ", cue) + chunk(b"LIST", labels) + chunk(b"smpl", sampler) + chunk(b"LIST", info) +
            chunk(b"bext", b"Description".ljust(602, b"\0")) + chunk(b"iXML", b"<BWFXML/>") + chunk(b"odd ", b"xyz"))


def write_marked(folder, name, source):
    """A WAV file with every chunk that Import looks into."""
    content = (folder / source).read_bytes()[12:] + cue_chunks()
    (folder / name).write_bytes(b"RIFF" + struct.pack("<I", 4 + len(content)) + b"WAVE" + content)


def run(words):
    subprocess.run([str(word) for word in words], check=True, timeout=60, stderr=subprocess.DEVNULL)


def write_corpus(folder):
    """The files, each of some thousand bytes."""
    folder.mkdir(parents=True, exist_ok=True)
    source, chapters = folder / "source.wav", folder / "chapters.txt"
    run(["sox", "-n", "-r", RATE, "-c", 2, "-b", 24, source, "synth", f"{FRAMES}s", "sine", "440", "pinknoise"])
    chapters.write_text(CHAPTERS, encoding="utf-8")
    for name, words in BY_SOX.items():
        run(["sox", source, *words.split(), folder / name])
    for name, words in BY_FFMPEG.items():
        run(["ffmpeg", "-v", "error", "-y", "-i", source, "-i", chapters, "-map", 0, "-map_metadata", 1,
             *words.split(), folder / name])
    write_marked(folder, "marked16.wav", "s16.wav")
    write_marked(folder, "marked24.wav", "s24.wav")
    chapters.unlink()
    return sorted(folder.iterdir())


if __name__ == "__main__":
    print(*write_corpus(pathlib.Path(sys.argv[1])), sep="\n")
