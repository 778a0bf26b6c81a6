// What is dragged over a view and dropped on it. The base holds nothing; CDropContent is the one that window
// systems fill. It lives from the drag's entering to its leaving or its drop; whoever wants it for longer
// remembers it.
#pragma once

#include "Tovrane/base/CBaseObject.h"

#include <string>
#include <vector>

namespace Tovra
{
class CDragContainer : public CBaseObject
{
public:
    // Answers of type.
    static constexpr long file = 0;
    static constexpr long unknown = -1;
    static constexpr long text = 2;
    static constexpr long end = -2;

    // [window thread]  Goes back to the first item and hands it out as next does.
    virtual void* first(long& size, long& type);
    // [window thread]  The next item: UTF-8 with an end behind its size bytes, valid until the next call.
    // At the end null, of type end.
    virtual void* next(long& size, long& type);
    // [window thread]  Of one item, without moving on: text, file for a file that is there, else unknown.
    virtual long getType(long index) const;
    virtual long getCount() const;

protected:
    long index = 0; // of the item that next hands out
};

// A text, or files. If both are there the text alone counts.
class CDropContent : public CDragContainer
{
public:
    CDropContent(std::string droppedText, std::vector<std::string> paths);

    void* next(long& size, long& type) override;
    // Beyond a text: end.
    long getType(long at) const override;
    long getCount() const override;

private:
    const bool isText;
    const std::vector<std::string> items;
    std::string handedOut;
};
}
