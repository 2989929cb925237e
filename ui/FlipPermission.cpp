// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/FlipPermission.h"
#include "platform/desktop/Compositor.h"
#include "platform/desktop/MotionPreference.h"

#include <QGuiApplication>

namespace FlipPermission {

namespace {

std::function<bool()> &replacement()
{
    static std::function<bool()> judge;
    return judge;
}

bool windowsCanBePlaced()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

} // namespace

bool granted()
{
    if (replacement())
        return replacement()();
    return windowsCanBePlaced() && platform::compositorRuns()
        && platform::MotionPreference::shared().animationsAllowed();
}

void prepare()
{
    if (windowsCanBePlaced())
        platform::MotionPreference::shared();
}

void setJudge(std::function<bool()> judge)
{
    replacement() = std::move(judge);
}

} // namespace FlipPermission
