#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""compare.py LOOP.wav GAIN.wav DELAY TICKS_IN_FRAMES EXPORT.wav...: is each export the loop, ducked by the gain record?

Ardour tells positions in whole ticks of 1/1920 quarter note, so that a duck may come so much earlier or later: at each
frame the export must lie between the delayed loop times the lowest and the highest gain of the frames around it. The
gain may also be a little off because Ardour's automation moves on once a block. A half-silent export fails, too.
"""
import array
import struct
import sys

ALLOWED = 0.012  # of the gain: how far the automated strength moves within a block


def read(path):
    """The channels of a WAV of 32-bit floats."""
    data = open(path, "rb").read()
    at, channels, samples = 12, 0, array.array("f")
    while at + 8 <= len(data):
        kind, size = data[at:at + 4], struct.unpack_from("<I", data, at + 4)[0]
        if kind == b"fmt ":
            code, channels, _, _, _, bits = struct.unpack_from("<HHIIHH", data, at + 8)
            if bits != 32 or code not in (3, 65534):
                raise SystemExit(f"{path}: not of 32-bit floats")
        elif kind == b"data":
            samples.frombytes(data[at + 8:at + 8 + size // 4 * 4])
        at += 8 + size + size % 2
    return [samples[c::channels] for c in range(channels)]


def sliding(values, width, choose):
    """For each place the chosen of the values at most width away."""
    return [choose(values[max(0, i - width):i + width + 1]) for i in range(len(values))]


def main():
    loop, record = read(sys.argv[1]), read(sys.argv[2])[0]
    delay, width = int(sys.argv[3]), int(sys.argv[4])
    gain = [(1.0 - each) / 2.0 for each in record]
    low, high = sliding(gain, width, min), sliding(gain, width, max)
    for path in sys.argv[5:]:
        export = read(path)
        frames = len(gain)
        if len(export) != 2 or len(export[0]) != frames:
            raise SystemExit(f"{path}: {len(export)} channels of {len(export[0])} frames, not 2 of {frames}")
        worst = 0.0
        for channel in range(2):
            for i in range(delay, frames):
                clean = loop[channel][i - delay]
                ends = clean * low[i], clean * high[i]
                beyond = max(min(ends) - export[channel][i], export[channel][i] - max(ends))
                if abs(clean) > 0.01:
                    worst = max(worst, beyond / abs(clean))
                elif beyond > 0.01 * ALLOWED:
                    worst = 1.0
        print(f"{path}: the gain is at most {max(worst, 0.0):.5f} beyond what ticks and blocks allow")
        if worst > ALLOWED:
            raise SystemExit("too far")


main()
