// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/FileManager.h"

#include "platform/DiskState.h"
#include "platform/Inquiry.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <chrono>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// A file manager that the bus has to start first needs a while.
constexpr std::chrono::milliseconds deadline = std::chrono::seconds(5);
constexpr std::chrono::seconds diskAnswersWithin(1);

QDBusMessage showItems(const QUrl &fileUrl)
{
    const QString service = u"org.freedesktop.FileManager1"_s;
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, u"/org/freedesktop/FileManager1"_s, service, u"ShowItems"_s);
    const QStringList uris{QString::fromLatin1(fileUrl.toEncoded())};
    const QString noStartupId = u""_s;
    call.setArguments({uris, noStartupId});
    return call;
}

// A folder is opened itself, a file is looked for in its folder.
void openFolder(const QUrl &fileUrl)
{
    // Never destroyed: the application object is gone before static objects are.
    static auto *const inquiry = new Inquiry<DiskState>;
    inquiry->ask(questionToDisk(fileUrl.toLocalFile()), diskAnswersWithin, LateAnswer::Dropped,
        [fileUrl](const std::optional<DiskState> &disk) {
            const bool isFolder = disk && disk->folderExists();
            QDesktopServices::openUrl(
                isFolder ? fileUrl : fileUrl.adjusted(QUrl::RemoveFilename | QUrl::StripTrailingSlash));
        });
}

void askSessionBus(const QUrl &fileUrl)
{
    const auto pending = QDBusConnection::sessionBus().asyncCall(showItems(fileUrl), deadline.count());
    // Without a bus a call ends here, and no watcher says so.
    if (pending.isFinished())
        return openFolder(fileUrl);
    auto *watcher = new QDBusPendingCallWatcher(pending, qApp);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, fileUrl] {
        if (watcher->isError())
            openFolder(fileUrl);
        watcher->deleteLater();
    });
}

} // namespace

void revealInFileManager(const QUrl &fileUrl)
{
    fileManager().inUse()(fileUrl);
}

Seam<std::function<void(const QUrl &)>> &fileManager()
{
    static Seam<std::function<void(const QUrl &)>> seam(askSessionBus);
    return seam;
}

} // namespace platform
