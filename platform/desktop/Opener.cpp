// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Opener.h"

#include "platform/Logging.h"
#include "platform/ThreadCheck.h"

#include <QDeadlineTimer>
#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <chrono>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// What ends later may be the browser itself, closed by the user.
constexpr std::chrono::seconds failsWithin(10);

} // namespace

Opener &Opener::shared()
{
    // Never destroyed, and with it no process that still runs: that may be what was opened.
    static auto *const opener = new Opener;
    return *opener;
}

// A process of its own may wait for the desktop; in a sandbox the toolkit itself would wait, with the window.
void Opener::open(const QUrl &url)
{
    assertMainThread();
    Q_EMIT asked();
    const QString program = QStandardPaths::findExecutable(u"xdg-open"_s);
    if (program.isEmpty())
        return openByToolkit(url);
    auto *const process = new QProcess(this);
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    // What ends this program from its terminal does not end what it has opened.
    process->setChildProcessModifier([] { setsid(); });
    connect(process, &QProcess::finished, this,
        [this, process, url, known = QDeadlineTimer(failsWithin)](int code, QProcess::ExitStatus status) {
            process->deleteLater();
            if (!known.hasExpired() && (code != 0 || status == QProcess::CrashExit))
                fail(url);
        });
    connect(process, &QProcess::errorOccurred, this, [this, process, url](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        process->deleteLater();
        openByToolkit(url);
    });
    process->start(program, {url.toString(QUrl::FullyEncoded)});
}

void Opener::openByToolkit(const QUrl &url)
{
    if (!QDesktopServices::openUrl(url))
        fail(url);
}

void Opener::fail(const QUrl &url)
{
    qCWarning(lcPlatform, "Nothing opens %s", qUtf8Printable(url.toDisplayString(QUrl::PreferLocalFile)));
    Q_EMIT nothingOpened(url);
}

} // namespace platform
