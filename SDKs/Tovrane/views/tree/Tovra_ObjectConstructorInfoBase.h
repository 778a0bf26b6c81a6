// SPDX-License-Identifier: GPL-3.0-or-later
// The description of one object of a window: its place, its parameter, and how it is made. An editor's
// registry (CTovraneEditor::addGuiObject) makes it and puts it into a container. [window thread]
#pragma once

#include "Tovrane/base/CRect.h"

#include <cstdint>

namespace Orbel
{
class ParameterProperty;
}

namespace Tovra
{
class CBitmap;
class CFrame;
class CView;

struct Tovra_ObjectConstructorInfoBase
{
    virtual ~Tovra_ObjectConstructorInfoBase() = default;
    // Makes the view and leaves it in object, with one reference. The base class makes none.
    virtual void createObject() { object = nullptr; }

    std::int32_t kind = 0;
    CRect rect;
    long tag = 0;
    CView* object = nullptr; // the result
    Orbel::ParameterProperty* attachedProperty = nullptr;
    Orbel::ParameterProperty* readoutProperty = nullptr; // see CControl for these three
    Orbel::ParameterProperty* visibleProperty = nullptr;
    Orbel::ParameterProperty* enabledProperty = nullptr;
    CFrame* frame = nullptr; // filled in by the registry
    CBitmap* background = nullptr;
};
}
