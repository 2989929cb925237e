// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/NSWindow_Flipr.h"
#include "platform/ThreadCheck.h"
#include "platform/desktop/Foreground.h"
#include "ui/flip/FlipPermission.h"
#include "ui/flip/FliprView.h"
#include "ui/flip/Stage.h"

#include <QPointer>
#include <QVBoxLayout>

namespace NSWindow_Flipr {

namespace {

constexpr QRect initialFrame{128, 128, 512, 768};
constexpr int sideMargin = 64;
constexpr int topMargin = 256;

// Past the window manager, which would push the margins on screen; never in the way of the pointer or the
// keyboard.
constexpr Qt::WindowFlags flippingFlags = Qt::Window | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint
    | Qt::BypassWindowManagerHint | Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus;

QPointer<QWidget> sharedWindow;

QWidget *createFlippingWindow()
{
    auto *window = new QWidget(nullptr, flippingFlags);
    window->setAttribute(Qt::WA_TranslucentBackground);
    window->setAttribute(Qt::WA_ShowWithoutActivating);
    window->setAttribute(Qt::WA_QuitOnClose, false);
    window->setGeometry(initialFrame);
    const QRect content({0, 0}, initialFrame.size());
    const QRectF original = content.adjusted(sideMargin, topMargin, -sideMargin, -topMargin);
    auto *layout = new QVBoxLayout(window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new FliprView(content, original));
    return window;
}

FliprView *viewOf(QWidget *window)
{
    return window ? window->findChild<FliprView *>() : nullptr;
}

} // namespace

QWidget *flippingWindow()
{
    if (!sharedWindow)
        sharedWindow = createFlippingWindow();
    return sharedWindow;
}

void releaseFlippingWindow()
{
    delete sharedWindow;
}

void flipToShowWindow(QWidget *window, QWidget *otherWindow, bool forward)
{
    platform::assertMainThread();
    FliprView *running = viewOf(sharedWindow);
    if (!otherWindow || otherWindow == window || (running && running->isFlipping()))
        return;
    Stage *stage = Stage::of(window) ? Stage::of(window) : Stage::of(otherWindow);
    if (!stage)
        return;
    const bool seen = window && window->isVisible() && !stage->isMinimized();
    if (seen && FlipPermission::granted()) {
        viewOf(flippingWindow())->setInitialWindow(window, otherWindow, forward);
    } else {
        stage->setCard(otherWindow);
        platform::bringToFront(stage);
    }
}

} // namespace NSWindow_Flipr
