// SPDX-License-Identifier: GPL-3.0-or-later
// The tests of the layers put an include in front of this.
