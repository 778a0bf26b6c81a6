// SPDX-License-Identifier: GPL-3.0-or-later
// This user's settings, which outlive the program and are shared by all instances in all hosts.
//
// The store of a name is a small text file, <config>/<domain>/<name>.conf, with one key=value a line; lines
// that it does not understand stay as they are. An object remembers the two texts and nothing else: no file
// is looked at before the first get or set, and each of them sees what others have stored meanwhile.
#pragma once

#include <string>

// [window thread] [worker]  Several objects may be used at once, also by several processes.
class COSPreferences
{
public:
    // Characters that a file name cannot contain ("/", control characters, dots at the start) count as "_".
    COSPreferences(const char* domainText, const char* nameText);

    // The value of key, or fallback (null: empty) if none is stored. out has at least 256 bytes; a longer
    // text is cut to 255.
    void getString(const char* key, char* out, const char* fallback) const;
    // The same, as a whole.
    std::string getString(const char* key, const char* fallback) const;

    // Stores any text under any key. False if it could not be written; what was stored before then still is.
    bool setString(const char* key, const char* value);

private:
    std::string folder() const;
    std::string file() const;

    std::string domain;
    std::string name;
};
