"""Sound files that Open does not read, for the pictures of Import."""

import struct

CHANNELS = 4


def write_takes(folder):
    """Two files: one of 24 bits and four channels, and one whose first dot hides its extension."""
    folder.mkdir()
    _write(folder / "take3.wav", 24, CHANNELS)
    _write(folder / "steps.v2.wav", 16, 1)


def _write(path, bits, channels):
    frame_bytes = channels * bits // 8
    data = bytes(frame_bytes * 48000)
    form = struct.pack("<4sIHHIIHH", b"fmt ", 16, 1, channels, 48000, 48000 * frame_bytes, frame_bytes, bits)
    chunks = b"WAVE" + form + struct.pack("<4sI", b"data", len(data)) + data
    path.write_bytes(struct.pack("<4sI", b"RIFF", len(chunks)) + chunks)
