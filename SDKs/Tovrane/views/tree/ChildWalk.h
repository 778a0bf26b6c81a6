// One walk over the children of a container that survives whatever the views that it visits do to the tree:
// they may remove themselves or others, add views, change the order, or give the container away.
//
// It holds the container, and the view that it handed out until the next one. What is added above is still
// visited by a walk from below; what is added below is not visited by a walk from above that has passed it. A
// view that brings itself to the front in each visit does not keep the walk going.
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

    // Walks over one container are nested like the calls in which they run.
    ChildWalk(CViewContainer& walked, Order walkOrder);
    ~ChildWalk();
    ChildWalk(const ChildWalk&) = delete;
    ChildWalk& operator=(const ChildWalk&) = delete;

    // Null at the end.
    CView* next();

private:
    friend class CViewContainer;

    void childInserted(size_t at);
    void childErased(size_t at);

    const Kept<CViewContainer> container;
    const Order order;
    ChildWalk* const outer;
    size_t
        position; // children ahead of it are visited in a walk from below, still to visit in one from above
    size_t visitsLeft; // at most
    Kept<CView> current;
};
}
