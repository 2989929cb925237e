// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>
#include <functional>

class QAction;
class QMenu;

// The pop-up menu of input devices. An item's title is the device's name, letter for letter.
namespace InputDeviceMenu {

// Removes every item and adds one for each name. Each new item goes to the top, so the menu reads backwards:
// the first device, which is the one that is then chosen, is the last item.
void rebuild(QMenu *menu, const QStringList &names, const std::function<void(QAction *item)> &chosen);

QString title(const QAction *item);

} // namespace InputDeviceMenu
