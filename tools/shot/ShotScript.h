// SPDX-License-Identifier: GPL-3.0-or-later
// The script of a window: what a user does with it, one step a line. Places are in units.
//
//   move X Y | leave | press left|middle|right | release left|middle|right | double left
//   modifiers none|shift[,alt,control,command]    held from here on
//   wheel X Y DISTANCE | key NAME | type TEXT     TEXT is the rest of the line
//   choose "ROW" ["ROW"...] | choose -            the next menu: the titles on a path, or closed
//   answer yes|no                                 the next question
//   file PATH | file -                            the next file panel: the rest of the line, or cancelled
//   idle MS | play FILE SECONDS | bpm B | set ID VALUE | timebase NAME | shot FILE
//
// A key is a letter, up, down, left, right, return, escape, tab, backspace, delete, home or end. A line that
// begins with # is a comment, and so is what follows a # after a blank, except in type and file. A word with
// blanks stands in quotes; within these \" and \\ stand for a quote and a backslash, and a quote that neither
// a blank nor the end of the line follows stands for itself.
//
// Scripts are untrusted: UTF-8 of at most 64 MiB, whose lines end in LF or CR LF.
#pragma once

#include "Tovrane/window/TovraKeyCode.h"

#include <string>
#include <string_view>
#include <vector>

namespace lodex
{
struct ShotStep
{
    enum class Kind
    {
        move,
        leave,
        press,
        release,
        doubleClick,
        modifiers,
        wheel,
        key,
        type,
        choose,
        answer,
        file,
        idle,
        play,
        bpm,
        set,
        timeBase,
        shot
    };

    Kind kind = Kind::leave;
    int line = 0; // of the script, from 1
    double x = 0.0;
    double y = 0.0;
    double amount = 0.0;     // notches, milliseconds, seconds, beats a minute; 1 for yes and 0 for no
    long mouse = 0;          // the bits of a button or of modifiers, as in a mouse word
    Tovra::TovraKeyCode key; // without modifiers
    std::string text;        // typed, a path, a name, or the value of a set; no path cancels a file panel
    std::string id;          // of a set
    std::vector<std::string> titles; // on the path to a row; none closes the menu
};

// Throws a ToolError that names the line, as "name:number", and says what was expected there.
std::vector<ShotStep> parseShotScript(std::string_view script, const std::string& name);

// Throws a ToolError for a file that cannot be read, too.
std::vector<ShotStep> readShotScript(const std::string& path);
}
