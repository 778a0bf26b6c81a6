// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/shot/ShotUser.h"

#include "CORE/Utf8.h"
#include "Tovrane/platform/headless/HeadlessTextEdit.h"
#include "Tovrane/views/tree/CFrame.h"

namespace lodex
{
using namespace Tovra;

static std::uint8_t keyModifiersOf(long mouseWord)
{
    constexpr struct
    {
        long mouse;
        KeyModifier key;
    } pairs[] = {
        {kModShift, kKeyShift}, {kModAlt, kKeyAlt}, {kModCommand, kKeyCommand}, {kModControl, kKeyControl}};
    unsigned bits = 0;
    for (const auto& pair : pairs)
        bits |= (mouseWord & pair.mouse) != 0 ? unsigned(pair.key) : 0U;
    return std::uint8_t(bits);
}

// The mouse

CPoint ShotUser::worldOf(CPoint place) const
{
    if (const CFrame* const frame = window->events().getFrame())
        frame->convertPluginToWorld(place);
    return place;
}

bool ShotUser::isInside(const CPoint& place) const
{
    const CFrame* const frame = window->events().getFrame();
    return frame != nullptr && place.x >= 0.0 && place.y >= 0.0 &&
           place.x < frame->getViewSize().getWidth() && place.y < frame->getViewSize().getHeight();
}

bool ShotUser::isInField(const CPoint& place) const
{
    const HeadlessTextEdit* const field = window->textEdit();
    return field != nullptr && field->place().pointInside(worldOf(place));
}

void ShotUser::noteMouse()
{
    window->setMouse(worldOf(hasLeft ? CPoint(-1.0, -1.0) : pointer),
                     window->events().heldButtons() | modifiers);
}

void ShotUser::move(const CPoint& place)
{
    pointer = place;
    hasLeft = !isInside(place);
    noteMouse();
    WindowEvents& events = window->events();
    if (hasLeft && events.heldButtons() == 0)
        return leave();
    events.move(worldOf(pointer), events.heldButtons() | modifiers);
}

void ShotUser::leave()
{
    hasLeft = true;
    noteMouse();
    window->events().leave(worldOf(pointer), modifiers);
}

void ShotUser::press(long button, int clicks)
{
    if (!isInField(pointer))
        window->events().press(worldOf(pointer), button | modifiers, clicks);
    noteMouse();
}

void ShotUser::release(long button)
{
    WindowEvents& events = window->events();
    events.release(worldOf(pointer), button | modifiers);
    noteMouse();
    if (hasLeft && events.heldButtons() == 0)
        leave();
}

void ShotUser::doubleClick(long button)
{
    press(button, 1);
    release(button);
    press(button, 2);
    release(button);
}

void ShotUser::wheel(const CPoint& place, double notches)
{
    WindowEvents& events = window->events();
    if (!isInField(place))
        events.wheel(worldOf(place), 0.0, notches, events.heldButtons() | modifiers);
}

void ShotUser::letGo()
{
    window->events().releaseAll();
    noteMouse();
}

// The keyboard

void ShotUser::strike(TovraKeyCode key)
{
    constexpr long commands = kModAlt | kModCommand | kModControl;
    const bool isLower = key.character >= 'a' && key.character <= 'z';
    if (isLower && (modifiers & kModShift) != 0)
        key.character += 'A' - 'a';
    key.modifiers = keyModifiersOf(modifiers);
    window->keyDown(key, (modifiers & commands) == 0 ? typedBy(key) : "");
    window->keyUp(key);
}

void ShotUser::type(const std::string& text)
{
    for (std::string_view rest = text; !rest.empty();)
    {
        const Core::Utf8::CodePoint next = Core::Utf8::decode(rest);
        rest.remove_prefix(next.length);
        TovraKeyCode key;
        if (next.value == ' ')
            key.virtualKey = kVirtualSpace;
        else if (next.value == '\t')
            key.virtualKey = kVirtualTab;
        else
            key.character = next.value;
        strike(key);
    }
}
}
