// SPDX-License-Identifier: GPL-3.0-or-later
// A walk over the children of a container during which the children may change the tree: remove themselves or
// others, add views, change the order, or drop the container.
//
// It keeps references to the container and to the child that next returned last. A walk from below visits
// what is added above its position, and a walk from above what is added below it. The number of visits is
// limited, so that a child that brings itself to the front at each visit does not make the walk endless.
// [window thread]
#pragma once

#include "Tovrane/views/tree/CViewContainer.h"

namespace Tovra
{
class CViewContainer::ChildWalk
{
public:
    enum Order
    {
        fromBelow,
        fromAbove
    };

    // Walks over one container have to be nested, as local variables are.
    ChildWalk(CViewContainer& walked, Order walkOrder);
    ~ChildWalk();
    ChildWalk(const ChildWalk&) = delete;
    ChildWalk& operator=(const ChildWalk&) = delete;

    // The next child; null at the end.
    CView* next();

private:
    friend class CViewContainer;

    void childInserted(size_t at);
    void childErased(size_t at);

    const Kept<CViewContainer> container;
    const Order order;
    ChildWalk* const outer;
    // The children below it have been visited by a walk from below, and are still to visit for one from
    // above.
    size_t position;
    size_t visitsLeft; // the maximum
    Kept<CView> current;
};
}
