// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/PopUpMenu.h"

#include "platform/ThreadCheck.h"

#include <QMenu>

namespace platform {

void popUpMenu(QMenu *menu, QWidget *view)
{
    assertMainThread();
    if (!menu || !view || menu->isEmpty())
        return;
    menu->setMinimumWidth(view->width());
    menu->exec(view->mapToGlobal(QPoint(0, view->height())));
}

} // namespace platform
