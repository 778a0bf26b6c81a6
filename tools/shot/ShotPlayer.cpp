// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/shot/ShotPlayer.h"

#include "Tovrane/draw/IOSBitmap.h"
#include "Tovrane/draw/PNGWriter.h"
#include "Tovrane/views/tree/CFrame.h"
#include "tools/common/OutputFile.h"
#include "tools/common/Text.h"
#include "tools/common/ToolError.h"

namespace lodex
{
using Kind = ShotStep::Kind;

static constexpr int idleMilliseconds = 25;

ShotPlayer::ShotPlayer(ShotOwner& driven, VirtualTime& running) : owner(driven), time(running)
{
    Tovra::CFrame* const frame = owner.frame();
    window.reset(frame != nullptr ? Tovra::HeadlessFrame::of(*frame) : nullptr);
    if (!window)
        throw ToolError("a script needs a window without a screen");
    answers = std::make_unique<ShotAnswers>(*window.get(), recorded);
    user = std::make_unique<ShotUser>(*window.get());
    drawing.start(idleMilliseconds, [this] { tick(); });
}

void ShotPlayer::play(const std::vector<ShotStep>& steps, const std::string& name)
{
    for (const ShotStep& step : steps)
        try
        {
            if (!window->events().isConnected())
                throw ToolError("the window has been closed");
            playStep(step);
            answers->giveAll();
        }
        catch (const ToolError& error)
        {
            throw ToolError(printable(name) + ':' + std::to_string(step.line) + ": " + error.what());
        }
    recorded.cursor = window->cursor();
    recorded.readOut = owner.readOut();
    user->letGo();
    answers->giveAll();
}

void ShotPlayer::playStep(const ShotStep& step)
{
    switch (step.kind)
    {
    case Kind::choose:
        return answers->choose(step.titles);
    case Kind::answer:
        return answers->answer(step.amount != 0.0);
    case Kind::file:
        return answers->takeFile(step.text);
    case Kind::idle:
        return idle(int(step.amount));
    case Kind::shot:
        return savePicture(step.text);
    case Kind::play:
    case Kind::bpm:
    case Kind::set:
    case Kind::timeBase:
        return playHostStep(step);
    default:
        return playUserStep(step);
    }
}

void ShotPlayer::playUserStep(const ShotStep& step)
{
    switch (step.kind)
    {
    case Kind::move:
        return user->move({step.x, step.y});
    case Kind::leave:
        return user->leave();
    case Kind::press:
        return user->press(step.mouse);
    case Kind::release:
        return user->release(step.mouse);
    case Kind::doubleClick:
        return user->doubleClick(step.mouse);
    case Kind::modifiers:
        return user->hold(step.mouse);
    case Kind::wheel:
        return user->wheel({step.x, step.y}, step.amount);
    case Kind::key:
        return user->strike(step.key);
    case Kind::type:
        return user->type(step.text);
    default:
        return;
    }
}

void ShotPlayer::playHostStep(const ShotStep& step)
{
    switch (step.kind)
    {
    case Kind::play:
        return owner.play(step.text, step.amount, *this);
    case Kind::bpm:
        return owner.setTempo(step.amount);
    case Kind::set:
        return owner.setParameter(step.id, step.text);
    case Kind::timeBase:
        return owner.setTimeBase(step.text);
    default:
        return;
    }
}

void ShotPlayer::tick()
{
    if (!window->events().isConnected())
        return;
    if (!owner.idlesItself())
        owner.idle();
    answers->giveAll();
}

void ShotPlayer::idle(int milliseconds)
{
    time.advance(milliseconds);
    answers->giveAll();
}

void ShotPlayer::savePicture(const std::string& path)
{
    OutputFile file(path);
    owner.idle();
    answers->giveAll();
    const auto bytes = Tovra::writePNG(*window->shownPicture());
    if (bytes.empty())
        throw ToolError("there is no picture for " + printable(path));
    file.write(bytes.data(), bytes.size());
    file.commit();
}
}
