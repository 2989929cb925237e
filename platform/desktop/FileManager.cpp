// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/FileManager.h"

#include "platform/DiskState.h"
#include "platform/Inquiry.h"
#include "platform/Logging.h"
#include "platform/desktop/Opener.h"
#include "platform/desktop/PendingCall.h"
#include "platform/desktop/PortalRequest.h"
#include "platform/desktop/SessionBus.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <chrono>
#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// One that the bus has to start first needs a while.
constexpr std::chrono::milliseconds answersWithin = std::chrono::seconds(5);
constexpr std::chrono::seconds diskAnswersWithin(1);

// Asks about the one file that is to be shown; a newer request takes the place of one that waits for a disk.
// Never destroyed: the application object is gone before static objects are.
template <typename Answer> Inquiry<Answer> &inquiry()
{
    static auto *const asked = new Inquiry<Answer>;
    return *asked;
}

// A folder is opened itself, a file is looked for in its folder.
void openFolder(const QUrl &fileUrl)
{
    inquiry<DiskState>().ask(questionToDisk(fileUrl.toLocalFile()), diskAnswersWithin, LateAnswer::Dropped,
        [fileUrl](const std::optional<DiskState> &disk) {
            const bool isFolder = disk && disk->folderExists();
            Opener::shared().open(
                isFolder ? fileUrl : fileUrl.adjusted(QUrl::RemoveFilename | QUrl::StripTrailingSlash));
        });
}

// Names the file without a right to read it.
QDBusUnixFileDescriptor openForPortal(const QByteArray &path)
{
    QDBusUnixFileDescriptor handle;
    if (const int descriptor = open(path.constData(), O_PATH | O_CLOEXEC); descriptor >= 0)
        handle.giveFileDescriptor(descriptor);
    return handle;
}

void askPortal(const QUrl &fileUrl)
{
    const auto opened = [fileUrl](const std::optional<QDBusUnixFileDescriptor> &file) {
        if (!file || !file->isValid())
            return openFolder(fileUrl);
        const QString noWindow = u""_s;
        PortalRequest::send(u"org.freedesktop.portal.OpenURI"_s, u"OpenDirectory"_s,
            {noWindow, QVariant::fromValue(*file)}, {}, answersWithin,
            [fileUrl](PortalRequest::Outcome outcome, const QVariantMap &) {
                if (outcome == PortalRequest::Outcome::Failed || outcome == PortalRequest::Outcome::Ended)
                    openFolder(fileUrl);
            });
    };
    inquiry<QDBusUnixFileDescriptor>().ask(
        [path = QFile::encodeName(fileUrl.toLocalFile())] { return openForPortal(path); }, diskAnswersWithin,
        LateAnswer::Dropped, opened);
}

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

void askSessionBus(const QUrl &fileUrl)
{
    const QDBusConnection bus = SessionBus::shared().connection();
    if (!bus.isConnected())
        return openFolder(fileUrl);
    const auto call = bus.asyncCall(showItems(fileUrl), int(answersWithin.count()));
    whenEnded(call, QCoreApplication::instance(), [fileUrl](const QDBusMessage &reply) {
        if (reply.type() == QDBusMessage::ReplyMessage)
            return;
        qCInfo(lcPlatform, "No file manager on the session bus: %s", qUtf8Printable(reply.errorMessage()));
        askPortal(fileUrl);
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
