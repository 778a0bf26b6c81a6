// SPDX-License-Identifier: GPL-3.0-or-later
// The flattened picture of what lies lowest in a container: its background, and on it the lowest children
// that are static. When a part of the frame is painted, these pixels are copied, and the children are not
// drawn.
//
// It is made again when all of the frame is painted, and when something that it shows, or its place in the
// frame, has changed. It is not used where the pixels would depend on what lies beneath or on how the
// container is drawn: with a background that is not opaque, with edges between whole pixels, or while the
// container is faded. So the pixels are always those of drawing everything.
#pragma once

#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CMACBitmap.h"

#include <functional>
#include <vector>

namespace Tovra
{
class CFrame;
class CView;

// [window thread]
class KeptGround
{
public:
    // What the picture depends on, apart from what views draw.
    struct Content
    {
        struct Child
        {
            const CView* view;
            CRect size;
            bool isVisible;

            bool operator==(const Child&) const = default;
        };
        std::vector<Child> children;
        bool isTransparent = false;
        unsigned fullPaints = 0; // of the frame
        double scale = 1.0;
        CPoint offset;
        CRect clip, pixels;

        bool operator==(const Content&) const = default;
    };

    // Something that is shown has changed.
    void drop() { isMade = false; }

    // Copies the part to be painted into the frame's picture. Before, if need be, the picture is made:
    // drawBackground and then drawChildren draw into it. False, and nothing is painted, if it cannot be used.
    // wanted has the children and isTransparent; the rest is found out here.
    bool paint(CFrame& frame, CDrawContext& context, Content wanted,
               const std::function<void()>& drawBackground, const std::function<void()>& drawChildren);

private:
    bool make(CFrame& frame, CDrawContext& context, const std::function<void()>& drawBackground,
              const std::function<void()>& drawChildren);
    bool isOpaque() const;
    void copyTo(CFrame& frame, const CRect& part);

    CMACBitmap picture; // of the size of the frame's
    Content content;
    bool isMade = false;
    bool isUsable = false; // what was made is opaque
};
}
