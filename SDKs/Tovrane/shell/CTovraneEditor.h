// SPDX-License-Identifier: GPL-3.0-or-later
// The editor shell: the bridge between a host's window and a tree of views. A product derives its editor from
// it, builds its views in prepeareGUI, and may make a frame of its own.
//
// While it is closed there is no frame. Open, it is in the idle list, so that it is painted whether or not
// the host idles it; a host's own idle calls do no harm. It can be opened and closed any number of times,
// each time with new views. Without a frame every operation does nothing.
//
// Its size and all of its views are in units; hosts see pixels. The scale between the two is WindowScale's,
// and a change of it resizes the host's window.
//
// [window thread], except for what IFrameEditor lets any thread read. The effect owns the editor and outlives
// it. A derived class closes in its own destructor.
#pragma once

#include "CORE/CriticalSection.h"
#include "Orbel/contract/IEditor.h"
#include "Tovrane/base/Kept.h"
#include "Tovrane/views/controls/WindowScale.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/views/tree/IFrameEditor.h"

#include <optional>

namespace Orbel
{
class OrbelOS;
}

namespace Tovra
{
struct Tovra_ObjectConstructorInfoBase;

class CTovraneEditor : public virtual Orbel::IEditor, public IFrameEditor
{
public:
    // Null for an editor without an effect.
    explicit CTovraneEditor(Orbel::OrbelOS* shownEffect);
    CTovraneEditor(const CTovraneEditor&) = delete;
    CTovraneEditor& operator=(const CTovraneEditor&) = delete;
    ~CTovraneEditor() override;

    // Makes the frame and its views inside the host's window, and paints it once; without a parent, a frame
    // that nobody sees. False, and it stays closed, where the parent is no window. Open already, it closes
    // first.
    virtual bool open(void* parent);
    bool open(void* parent, const char*) override { return open(parent); }
    // Ends what the user is doing, and takes the views down.
    void close() override;
    bool isOpen() const override { return frame.get() != nullptr; }

    // In pixels, also while it is closed; then with the scale that it would have.
    void getSize(double& width, double& height) const override;
    // In units.
    virtual void getRect(CRect& rect) const { rect = size; }
    // A new size in units, also of the open window. False where there is no window, or it refuses.
    virtual bool setSize(int width, int height);
    void setWindow(Orbel::IEditorWindow* shownIn) override { window = shownIn; }
    void setContentScale(double pixelsPerUnit) override;

    // Paints what is dirty. Skipped while another thread closes the editor.
    void idle() override;
    void draw() override { draw(nullptr); }
    // Draws a part of the window now, in units, with its corners in any order; null for all of it.
    virtual void draw(const CRect* part);

    // Where the pointer is. In notches, up is positive.
    bool onWheel(float distance) override;
    bool onKeyDown(const Core::KeyCode& key) override;
    bool onKeyUp(const Core::KeyCode& key) override;

    // Null while it is closed.
    CFrame* getFrame() const { return frame.get(); }
    Orbel::OrbelOS* getEffect() const { return effect; }

    // IFrameEditor. Gestures go to the effect, which tells its host.
    void convertWorldToPlugin(CPoint& point) const override;
    void convertPluginToWorld(CPoint& point) const override;
    void convertPluginToWorld(CRect& rect) const override;
    double getEffectTempo() const override;
    double getSampleRate() const override;
    void beginEdit(Orbel::ParameterProperty* property) override;
    void endEdit(Orbel::ParameterProperty* property) override;
    void performEdit(Orbel::ParameterProperty* property) override;

    // How addGuiObject makes an object.
    enum Kind : int
    {
        kindNameDisplay = 100, // a Tovra_ParamDisplay, as are 101 and 103 to 107
        kindLastDisplay = 107,
        kindTextEdit = 109, // these two make their own: createObject
        kindOwn = 110
    };
    // Makes the object that the description stands for, and adds it to the container, or to the frame where
    // that is null. The description's object is null where its kind, its type or the container fits nothing;
    // otherwise the container owns the object. A null description does nothing.
    void addGuiObject(Tovra_ObjectConstructorInfoBase* info, CViewContainer* container);

protected:
    // Fills the frame that was just made.
    virtual void prepeareGUI(CFrame*) {}
    // One reference, the caller's.
    virtual CFrame* getNewCreateFrame(const CRect& rect, void* parent, CTovraneEditor* editor);
    // At each idle, after the frame.
    virtual void onIdle() {}

private:
    void applyScale(double pixelsPerUnit);
    bool resizeWindow();
    double scale() const;

    CRect size; // in units
    Kept<CFrame> frame;
    Orbel::OrbelOS* const effect;
    Orbel::IEditorWindow* window = nullptr;
    Core::Threads::CriticalSection editorLock; // against painting a frame that is closed
    std::optional<WindowScale> windowScale;    // of the frame
    double openScale = 1.0;                    // of the frame
    double hostScale = 0.0;                    // 0 if the host tells nothing
};
}
