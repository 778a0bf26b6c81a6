// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/instance/IEffectEditor.h"

#include <atomic>

static std::atomic<EditorFactory> editorFactory = nullptr;

void setEditorFactory(EditorFactory factory)
{
    editorFactory = factory;
}

EditorFactory getEditorFactory()
{
    return editorFactory;
}
