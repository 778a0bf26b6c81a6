#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""add_loop.py SESSION_FOLDER FILE.wav FRAMES: puts a stereo WAV at time 0 on the track "Loop".

Ardour's Lua tool has no import, so the sources, the region and its place are written into the saved session. The WAV
has the session's rate.
"""
import pathlib
import shutil
import sys
import xml.etree.ElementTree as ET

SUPERCLOCKS = 282240000  # a second, the unit of times in a session
RATE = 48000

folder, wav, frames = pathlib.Path(sys.argv[1]), sys.argv[2], int(sys.argv[3])
session_file = folder / "lodex.ardour"
tree = ET.parse(session_file)
root = tree.getroot()
shutil.copy(wav, next((folder / "interchange").iterdir()) / "audiofiles" / "loop.wav")
last_id = int(root.get("id-counter"))


def new_id():
    global last_id
    last_id += 1
    return str(last_id)


def add_source(channel):
    source = new_id()
    ET.SubElement(root.find("Sources"), "Source", {
        "name": "loop.wav", "take-id": "", "type": "audio", "flags": "", "id": source, "channel": str(channel),
        "origin": "loop.wav"})
    return source


def add_region(parent, name, whole, sources):
    attributes = {
        "name": name, "muted": "0", "opaque": "1", "locked": "0", "video-locked": "0", "automatic": "0",
        "whole-file": whole, "import": "1", "external": "0", "sync-marked": "0", "left-of-split": "0",
        "right-of-split": "0", "hidden": "0", "position-locked": "0", "valid-transients": "0", "start": "a0",
        "length": f"a{frames * SUPERCLOCKS // RATE}@a0", "stretch": "1", "shift": "1", "layering-index": "0",
        "envelope-active": "0", "default-fade-in": "0", "default-fade-out": "0", "fade-in-active": "0",
        "fade-out-active": "0", "scale-amplitude": "1", "id": new_id(), "type": "audio", "first-edit": "nothing",
        "channels": "2"}
    for channel, source in enumerate(sources):
        attributes[f"source-{channel}"] = attributes[f"master-source-{channel}"] = source
    ET.SubElement(parent, "Region", attributes)


sources = [add_source(0), add_source(1)]
track = next(route for route in root.find("Routes") if route.get("name") == "Loop")
playlist = next(each for each in root.find("Playlists")
                if track.get("id") == each.get("orig-track-id") or each.get("id") == track.get("audio-playlist"))
add_region(root.find("Regions"), "loop", "1", sources)
add_region(playlist, "loop.1", "0", sources)
root.set("id-counter", str(last_id + 1))
tree.write(session_file, encoding="UTF-8", xml_declaration=True)
