#include "Tovrane/platform/x11/X11TextEdit.h"

#include "Tovrane/CFontDesc.h"
#include "Tovrane/ITextEditCallback.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
namespace
{
constexpr int blinkMilliseconds = 530;
constexpr double padding = 2.0;      // between the field's edge and its text, in pixels
constexpr double fontShare = 0.7;    // of the field's height
constexpr double smallestFont = 6.0; // in pixels
constexpr double largestFont = 200.0;

CColor opaque(CColor color)
{
    color.alpha = 255;
    return color;
}

// So much of b in a.
CColor between(CColor a, CColor b, double share)
{
    const auto mix = [share](unsigned char x, unsigned char y)
    { return static_cast<unsigned char>(x + (y - x) * share + 0.5); };
    return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue), 255};
}

void fill(CDrawContext& context, double left, double top, double right, double bottom, CColor color)
{
    context.setFillColor(color);
    context.drawRect(CRect(left, top, right, bottom), kFilled);
}
}

X11TextEdit::X11TextEdit(X11Frame& frame, ITextEditCallback& asked)
    : owner(&frame),
      callback(&asked),
      canvas(frame.sharedConnection()),
      window(frame.sharedConnection(), *this, X11Window::child, frame.windowId(), {}),
      back(opaque(asked.textEditGetBackColor())),
      font(opaque(asked.textEditGetFontColor()))
{
    frame.beginTextEdit(*this);
    window.setCursor(window.connection().cursor(X11Cursors::text));
    updateSize();
    window.show();
    blink.start(blinkMilliseconds,
                [this]
                {
                    isCaretOn = !isCaretOn;
                    paint();
                });
}

X11TextEdit::~X11TextEdit()
{
    disconnect();
}

void X11TextEdit::disconnect()
{
    if (!owner)
        return;
    blink.stop();
    callback = nullptr;
    owner->endTextEdit(*this);
    owner.reset();
    window.destroy();
}

const char* X11TextEdit::getText()
{
    return line.text().c_str();
}

bool X11TextEdit::setText(const char* text)
{
    line.setText(text != nullptr ? text : "");
    scrolled = 0.0;
    changed();
    return owner && !window.isGone();
}

bool X11TextEdit::updateSize()
{
    if (callback == nullptr || window.isGone())
        return false;
    CRect field = callback->textEditGetSize();
    CRect seen = callback->textEditGetVisibleSize();
    seen.bound(field);
    callback->convertPluginToWorld(field);
    callback->convertPluginToWorld(seen);
    const bool isSeen = seen.right > seen.left && seen.bottom > seen.top;
    const X11Place whole =
        X11Window::bounded(field.left, field.top, field.right - field.left, field.bottom - field.top);
    const X11Place part =
        X11Window::bounded(seen.left, seen.top, seen.right - seen.left, seen.bottom - seen.top);
    clippedLeft = part.x - whole.x;
    clippedTop = part.y - whole.y;
    fieldWidth = whole.width;
    fieldHeight = whole.height;
    fontSize = std::clamp(std::floor(fieldHeight * fontShare + 0.5), smallestFont, largestFont);
    window.setPlace(part);
    canvas.setSize(part.width, part.height);
    if (isSeen)
        window.show();
    else
        window.hide();
    changed();
    return true;
}

void X11TextEdit::setFocused(bool focused)
{
    isFocused = focused;
    changed();
}

// The caret stands still while one types.
void X11TextEdit::changed()
{
    isCaretOn = true;
    paint();
}

std::vector<double> X11TextEdit::measure()
{
    canvas.context().setFont(&gNormalFont_NoLCD, fontSize, 0);
    const std::string& text = line.text();
    std::vector<double> edges(text.size() + 1, 0.0);
    for (std::size_t i = 1; i <= text.size(); ++i)
    {
        const bool isInside = i < text.size() && (static_cast<unsigned char>(text[i]) & 0xc0) == 0x80;
        edges[i] = isInside ? edges[i - 1] : canvas.context().getStringWidth(text.substr(0, i).c_str());
    }
    return edges;
}

void X11TextEdit::keepCaretInSight(const std::vector<double>& edges)
{
    const double room = std::max(fieldWidth - 2.0 * padding - 1.0, 1.0);
    const double caret = edges[line.caret()];
    scrolled = std::clamp(scrolled, caret - room, caret);
    scrolled = std::clamp(scrolled, 0.0, std::max(edges.back() - room, 0.0));
}

void X11TextEdit::paint()
{
    if (!owner || window.isGone())
        return;
    const std::vector<double> edges = measure();
    keepCaretInSight(edges);
    CDrawContext& context = canvas.context();
    const double left = std::floor(padding - scrolled - clippedLeft + 0.5);
    const double top = -clippedTop;
    const double bottom = top + fieldHeight;
    fill(context, 0.0, 0.0, window.place().width, window.place().height, back);
    if (line.hasSelection())
        fill(context, left + std::floor(edges[line.selectionStart()]), top + 1.0,
             left + std::ceil(edges[line.selectionEnd()]), bottom - 1.0,
             between(back, font, isFocused ? 0.35 : 0.2));
    context.setFontColor(font);
    context.drawString(line.text().c_str(), CRect(left, top, left + edges.back() + fontSize, bottom + 1.0),
                       true, kTextLeft);
    const double caret = left + std::floor(edges[line.caret()] + 0.5);
    if (isFocused && isCaretOn && !line.hasSelection())
        fill(context, caret, top + 2.0, caret + 1.0, bottom - 2.0, font);
    canvas.show(window);
}

std::size_t X11TextEdit::positionAt(int x)
{
    const std::vector<double> edges = measure();
    const double place = x + clippedLeft + scrolled - padding;
    std::size_t nearest = 0;
    for (std::size_t i = 1; i < edges.size(); ++i)
        if (std::fabs(edges[i] - place) < std::fabs(edges[nearest] - place))
            nearest = i;
    return nearest;
}

void X11TextEdit::handleEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    if (!owner)
        return;
    const Kept<X11Frame> alive(owner);
    switch (type)
    {
    case XCB_EXPOSE:
    {
        const auto& part = as<xcb_expose_event_t>(event);
        return canvas.showAgain(window, {part.x, part.y, part.width, part.height});
    }
    case XCB_BUTTON_PRESS:
        return pressed(as<xcb_button_press_event_t>(event));
    case XCB_MOTION_NOTIFY:
        return isDragging ? dragged(as<xcb_motion_notify_event_t>(event).event_x) : void();
    case XCB_BUTTON_RELEASE:
        if (as<xcb_button_release_event_t>(event).detail == XCB_BUTTON_INDEX_1 && isDragging)
        {
            isDragging = false;
            offerSelection();
        }
        return;
    case XCB_KEY_PRESS: // under the mouse, with the focus on a window above ours
    case XCB_KEY_RELEASE:
        return alive->handleKey(type, event);
    default:
        return;
    }
}

void X11TextEdit::pressed(const xcb_button_press_event_t& event)
{
    const int count = clicks.press(event.detail, event.event_x, event.event_y, event.time);
    if (event.detail == XCB_BUTTON_INDEX_2)
    {
        line.moveTo(positionAt(event.event_x), false);
        paste(X11Clipboard::selection);
        return changed();
    }
    if (event.detail != XCB_BUTTON_INDEX_1)
        return;
    owner->takeFocus();
    isDragging = count == 1;
    if (count == 1)
        line.moveTo(positionAt(event.event_x), (event.state & XCB_MOD_MASK_SHIFT) != 0);
    else if (count == 2)
        line.selectWord(positionAt(event.event_x));
    else
        line.selectAll();
    if (count > 1)
        offerSelection();
    changed();
}

void X11TextEdit::dragged(int x)
{
    line.moveTo(positionAt(x), true);
    changed();
}
}
