// SPDX-License-Identifier: GPL-3.0-or-later
// Joins the product's parts that must not know each other: what lies below owns an interface, what lies above
// hands itself over here.
#pragma once

// Registers the window systems: X11, and the headless one for frames without a window, and the presenter of
// messages, which shows them in the frames. Called by the entries of the bundle and by the tools before
// anything else; calling it again changes nothing. [window thread]
void wireUp();
