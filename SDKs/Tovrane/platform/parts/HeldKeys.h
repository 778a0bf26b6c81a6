// SPDX-License-Identifier: GPL-3.0-or-later
// Who took the press of each key that is down, so that its release goes the same way.
//
// A window inside a host's window passes on the keys that it has no use for. A host that saw a press has to
// see the release, and must not see the release of a key that was taken here.
#pragma once

#include <array>
#include <cstdint>

namespace Tovra
{
enum class KeyTaker : std::uint8_t
{
    unknown,  // the press went to another window: both the views and the host get the release
    views,    // also a text field, or a focus that moved on
    host,     // no view wanted it: both get the release, as both got the press
    swallowed // by a menu or by a panel that is open: nobody gets the release
};

// [window thread]
class HeldKeys
{
public:
    // Called for each repetition of the key, too. If the host got one of them, it gets the release.
    void press(std::uint8_t key, KeyTaker taker)
    {
        if (takers[key] != KeyTaker::host)
            takers[key] = taker;
    }
    // Who took the press. The key is up from here on.
    KeyTaker release(std::uint8_t key)
    {
        const KeyTaker taker = takers[key];
        takers[key] = KeyTaker::unknown;
        return taker;
    }
    // The keyboard's focus has gone: whoever has it now gets the releases.
    void clear() { takers.fill(KeyTaker::unknown); }

private:
    std::array<KeyTaker, 256> takers{};
};
}
