// SPDX-License-Identifier: GPL-3.0-or-later
// The content of a drag and drop. The base class is empty; window systems fill a CDropContent.
//
// It lives from the moment when the drag enters the window until it leaves or is dropped; whoever needs it
// for longer remembers it.
#pragma once

#include "Tovrane/base/CBaseObject.h"

#include <string>
#include <vector>

namespace Tovra
{
class CDragContainer : public CBaseObject
{
public:
    // The types of an item.
    static constexpr long file = 0;
    static constexpr long unknown = -1;
    static constexpr long text = 2;
    static constexpr long end = -2;

    // [window thread]  Goes back to the first item and returns it like next.
    virtual void* first(long& size, long& type);
    // [window thread]  The next item: size bytes of UTF-8 and a NUL, valid until the next call. After the
    // last item null, with the type end.
    virtual void* next(long& size, long& type);
    // [window thread]  The type of one item: text, file for a file that exists, otherwise unknown.
    virtual long getType(long index) const;
    virtual long getCount() const;

protected:
    long index = 0; // of the item that next returns
};

// A text or files. If there are both, only the text counts.
class CDropContent : public CDragContainer
{
public:
    CDropContent(std::string droppedText, std::vector<std::string> paths);

    void* next(long& size, long& type) override;
    // For an index after a text it is end.
    long getType(long at) const override;
    long getCount() const override;

private:
    const bool isText;
    const std::vector<std::string> items;
    std::string handedOut;
};
}
