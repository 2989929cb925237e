// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Opener.h"

#include "platform/ThreadCheck.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace platform {

// A process of its own may wait for the desktop; in a sandbox the toolkit itself would wait, with the window.
void openOnDesktop(const QUrl &url)
{
    assertMainThread();
    const QString opener = QStandardPaths::findExecutable(u"xdg-open"_s);
    if (opener.isEmpty() || !QProcess::startDetached(opener, {url.toString(QUrl::FullyEncoded)}))
        QDesktopServices::openUrl(url);
}

} // namespace platform
