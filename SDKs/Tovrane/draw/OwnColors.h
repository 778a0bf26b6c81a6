// SPDX-License-Identifier: GPL-3.0-or-later
// The colours of what the toolkit draws by itself over any editor: the focus, messages, open menus.
#pragma once

#include "Tovrane/draw/CColor.h"

namespace Tovra::OwnColors
{
inline constexpr CColor accent{255, 204, 64, 255}; // titles, and what is chosen
inline constexpr CColor focus{200, 250, 240, 150}; // the line around a control that has the keyboard

namespace Message
{
inline constexpr CColor dim{6, 6, 10, 170}; // over the rest of the window
inline constexpr CColor ground{27, 28, 39, 255};
inline constexpr CColor edge{84, 85, 108, 255};
inline constexpr CColor text{218, 218, 230, 255};
inline constexpr CColor button{38, 39, 54, 255};
inline constexpr CColor buttonLit{52, 54, 74, 255};
inline constexpr CColor buttonPressed{16, 17, 24, 255};
}

namespace Menu
{
inline constexpr CColor ground{42, 44, 48, 255};
inline constexpr CColor edge{78, 81, 88, 255};
inline constexpr CColor line{62, 65, 71, 255};
inline constexpr CColor mark{70, 92, 122, 255};
inline constexpr CColor text{222, 224, 228, 255};
inline constexpr CColor markedText{255, 255, 255, 255};
inline constexpr CColor faintText{128, 132, 140, 255};
}
}
