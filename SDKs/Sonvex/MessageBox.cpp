// SPDX-License-Identifier: GPL-3.0-or-later
#include "Sonvex/MessageBox.h"

#include "CORE/Format.h"
#include "CORE/Utf8.h"

#include <atomic>

namespace Sonvex
{
constexpr size_t longestBody = 431; // bytes

static std::atomic<IMessageBoxPresenter*> presenter{nullptr}; // written at start and end, read by any thread

static int present(Tovra::CFrame* frame, MessageBoxType type, const char* title, const std::string& body)
{
    auto* const shows = presenter.load();
    return shows ? shows->show(frame, type, title ? title : "", body.c_str()) : 0;
}

void setMessageBoxPresenter(IMessageBoxPresenter* newPresenter)
{
    presenter = newPresenter;
}

int MessageBoxModal(Tovra::CFrame* frame, MessageBoxType type, const char* title, const char* body)
{
    return present(frame, type, title, std::string(Core::Utf8::cut(body ? body : "", longestBody)));
}

int showFormattedMessageBox(Tovra::CFrame* frame, MessageBoxType type, const char* title, const char* format,
                            va_list arguments)
{
    return present(frame, type, title, Core::formatBounded(longestBody, format, arguments));
}
}
