// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FlipPermission.h"
#include "platform/desktop/Compositor.h"
#include "platform/desktop/MotionPreference.h"
#include "platform/desktop/Overlay.h"

namespace FlipPermission {

namespace {

bool nothingIsAgainstIt()
{
    return platform::canPlaceOverlays() && platform::compositorRuns()
        && platform::MotionPreference::shared().animationsAllowed();
}

} // namespace

bool granted()
{
    return judge().inUse()();
}

void prepare()
{
    if (platform::canPlaceOverlays())
        platform::MotionPreference::shared();
}

platform::Seam<std::function<bool()>> &judge()
{
    static platform::Seam<std::function<bool()>> seam(nothingIsAgainstIt);
    return seam;
}

} // namespace FlipPermission
