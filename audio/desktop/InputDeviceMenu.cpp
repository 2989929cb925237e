// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/desktop/InputDeviceMenu.h"

#include <QMenu>

namespace InputDeviceMenu {

namespace {

// A menu would take "&" for a mnemonic and what follows a tab for a key.
QString shownTitle(QString name)
{
    return name.replace(u'&', QStringLiteral("&&")).replace(u'\t', u' ');
}

} // namespace

void rebuild(QMenu *menu, const QStringList &names, const std::function<void(QAction *item)> &chosen)
{
    menu->clear();
    for (const QString &name : names) {
        auto *item = new QAction(shownTitle(name), menu);
        item->setData(name);
        QObject::connect(item, &QAction::triggered, menu, [item, chosen] { chosen(item); });
        menu->insertAction(menu->actions().value(0), item);
    }
    if (names.isEmpty())
        menu->close();
}

QString title(const QAction *item)
{
    return item->data().toString();
}

} // namespace InputDeviceMenu
