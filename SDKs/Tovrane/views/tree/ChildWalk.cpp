// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/tree/ChildWalk.h"

namespace Tovra
{
CViewContainer::ChildWalk::ChildWalk(CViewContainer& walked, Order walkOrder)
    : container(&walked),
      order(walkOrder),
      outer(walked.walks),
      position(walkOrder == fromAbove ? walked.children.size() : 0),
      visitsLeft(walked.children.size())
{
    walked.walks = this;
}

CViewContainer::ChildWalk::~ChildWalk()
{
    container->walks = outer;
}

CView* CViewContainer::ChildWalk::next()
{
    const std::vector<CView*>& views = container->children;
    CView* found = nullptr;
    const bool isOver = visitsLeft == 0 || position == (order == fromAbove ? 0 : views.size());
    if (!isOver)
    {
        --visitsLeft;
        found = views[order == fromAbove ? --position : position++];
    }
    current.reset(found);
    return found;
}

void CViewContainer::ChildWalk::childInserted(size_t at)
{
    ++visitsLeft;
    if (at < position)
        ++position;
}

void CViewContainer::ChildWalk::childErased(size_t at)
{
    if (at < position)
        --position;
}
}
