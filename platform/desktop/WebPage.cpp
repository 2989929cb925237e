// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/WebPage.h"

#include <QDesktopServices>

namespace platform {

namespace {

std::function<void(const QUrl &)> &openerInUse()
{
    static std::function<void(const QUrl &)> instance;
    return instance;
}

} // namespace

void openWebPage(const QUrl &url)
{
    if (openerInUse())
        openerInUse()(url);
    else
        QDesktopServices::openUrl(url);
}

void setWebPageOpener(std::function<void(const QUrl &)> opener)
{
    openerInUse() = std::move(opener);
}

} // namespace platform
