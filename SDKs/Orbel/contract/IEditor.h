// An effect's editor, as far as the framework and its adapters know it: something that the effect owns and
// destroys, and that shows itself inside a window of the host. The toolkit's editor shell implements it.
//
// Every operation has a harmless default. [window thread]
#pragma once

#include <cstdint>

namespace Orbel
{
// A key, as hosts hand it to an editor.
struct EditorKey
{
    char character = 0;          // of a key that prints in ASCII, else 0
    std::uint8_t virtualKey = 0; // of any other, in the numbers that VST hosts use
    std::uint8_t modifiers = 0;  // 1 shift, 2 alt, 4 command, 8 control
};

class IEditor
{
public:
    virtual ~IEditor() = default;

    // Its size in pixels, open or not.
    virtual void getSize(double& width, double& height) const { width = height = 0.0; }
    // Inside the host's window, whose kind the name tells, as VST 3 has it. False: there is nothing to see.
    virtual bool open(void* /*parentWindow*/, const char* /*platformType*/) { return false; }
    virtual void close() {}

    // True where it was taken.
    virtual bool onWheel(float /*distance*/) { return false; }
    virtual bool onKeyDown(const EditorKey&) { return false; }
    virtual bool onKeyUp(const EditorKey&) { return false; }
};
}
