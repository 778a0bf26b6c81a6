// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/window/CDragContainer.h"

#include <filesystem>
#include <system_error>

namespace Tovra
{
void* CDragContainer::first(long& size, long& type)
{
    index = 0;
    return next(size, type);
}

void* CDragContainer::next(long& size, long& type)
{
    size = 0;
    type = end;
    return nullptr;
}

long CDragContainer::getType(long) const
{
    return unknown;
}

long CDragContainer::getCount() const
{
    return 0;
}

CDropContent::CDropContent(std::string droppedText, std::vector<std::string> paths)
    : isText(!droppedText.empty()),
      items(isText ? std::vector<std::string>{std::move(droppedText)} : std::move(paths))
{
}

void* CDropContent::next(long& size, long& type)
{
    if (index >= getCount())
        return CDragContainer::next(size, type);
    handedOut = items[size_t(index++)];
    size = long(handedOut.size());
    type = isText ? text : file;
    return handedOut.data();
}

long CDropContent::getType(long at) const
{
    const bool isItem = at >= 0 && at < getCount();
    if (isText)
        return isItem ? text : end;
    std::error_code ignored;
    return isItem && std::filesystem::exists(items[size_t(at)], ignored) ? file : unknown;
}

long CDropContent::getCount() const
{
    return long(items.size());
}
}
