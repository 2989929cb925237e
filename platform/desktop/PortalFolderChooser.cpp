// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/PortalFolderChooser.h"

#include "platform/Logging.h"
#include "platform/desktop/PendingCall.h"
#include "platform/desktop/SessionBus.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QFile>
#include <QGuiApplication>
#include <QUrl>
#include <limits>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// The service may have to be started first. The user waits for the chooser and sees nothing meanwhile.
constexpr std::chrono::seconds firstAnswerWithin(3);

// What the service says at the end.
constexpr uint chosen = 0;
constexpr uint cancelled = 1;

const QString service = u"org.freedesktop.portal.Desktop"_s;
const QString servicePath = u"/org/freedesktop/portal/desktop"_s;
const QString requestInterface = u"org.freedesktop.portal.Request"_s;

QString newToken()
{
    static int count = 0;
    return u"flipside%1"_s.arg(++count);
}

// Named by the service after who asks, so that no answer is missed.
QString requestPath(const QDBusConnection &bus, const QString &token)
{
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    return u"%1/request/%2/%3"_s.arg(servicePath, sender, token);
}

// So that the chooser stands on the window. On Wayland the toolkit does not tell the window's handle.
QString handleOf(const QWidget *window)
{
    const bool onX11 = QGuiApplication::platformName() == u"xcb"_s;
    return onX11 ? u"x11:"_s + QString::number(window->window()->effectiveWinId(), 16) : QString();
}

} // namespace

PortalFolderChooser::PortalFolderChooser(
    QWidget *window, const FolderQuestion &question, FolderChoice choice, Otherwise otherwise)
    : QDialog(window)
    , m_choice(std::move(choice))
    , m_otherwise(std::move(otherwise))
{
    setAttribute(Qt::WA_DontShowOnScreen);
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] { giveUp(u"it does not answer"_s); });
    open();
    ask(question);
}

PortalFolderChooser::~PortalFolderChooser()
{
    if (const FolderChoice choice = end())
        choice({});
}

QDBusMessage PortalFolderChooser::openFile(const FolderQuestion &question, const QString &token) const
{
    QVariantMap options{{u"handle_token"_s, token}, {u"directory"_s, true}, {u"modal"_s, true}};
    // A path here ends with a null byte.
    if (!question.beginIn.isEmpty())
        options.insert(u"current_folder"_s, QFile::encodeName(question.beginIn).append('\0'));
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, servicePath, u"org.freedesktop.portal.FileChooser"_s, u"OpenFile"_s);
    call.setArguments({handleOf(parentWidget()), question.title, options});
    return call;
}

void PortalFolderChooser::ask(const FolderQuestion &question)
{
    QDBusConnection bus = SessionBus::shared().connection();
    auto *watcher = new QDBusServiceWatcher(service, bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { giveUp(u"it has ended"_s); });
    bus.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s,
        this, SLOT(busHasGone()));
    const QString token = newToken();
    listenTo(requestPath(bus, token));
    m_deadline.start(firstAnswerWithin);
    // The deadline is kept here, because what is opened after it must be closed again.
    constexpr int noTimeout = std::numeric_limits<int>::max();
    whenEnded(bus.asyncCall(openFile(question, token), noTimeout), this,
        [this](const QDBusMessage &first) { opened(first); });
}

void PortalFolderChooser::listenTo(const QString &request)
{
    m_request = request;
    SessionBus::shared().connection().connect(
        service, request, requestInterface, u"Response"_s, this, SLOT(answered(uint, QVariantMap)));
}

void PortalFolderChooser::opened(const QDBusMessage &first)
{
    m_deadline.stop();
    if (first.type() != QDBusMessage::ReplyMessage)
        return giveUp(first.errorMessage());
    // Only services from before the paths were agreed on use another one.
    const QString request = first.arguments().value(0).value<QDBusObjectPath>().path();
    if (!m_request.isEmpty() && request != m_request)
        listenTo(request);
}

void PortalFolderChooser::busHasGone()
{
    giveUp(u"the session bus has gone"_s);
}

void PortalFolderChooser::answered(uint response, const QVariantMap &results)
{
    if (m_request.isEmpty())
        return;
    if (response != chosen && response != cancelled)
        return giveUp(u"it could not ask"_s);
    m_request.clear();
    const QUrl folder(results.value(u"uris"_s).toStringList().value(0));
    if (const FolderChoice choice = end())
        choice(response == chosen && folder.isLocalFile() ? std::optional(folder) : std::nullopt);
}

void PortalFolderChooser::giveUp(const QString &reason)
{
    qCInfo(lcPlatform, "The desktop's folder chooser is not used: %s", qUtf8Printable(reason));
    const Otherwise otherwise = m_otherwise;
    if (FolderChoice choice = end())
        otherwise(std::move(choice));
}

// The program ends.
void PortalFolderChooser::done(int result)
{
    QDialog::done(result);
    if (const FolderChoice choice = end())
        choice({});
}

FolderChoice PortalFolderChooser::end()
{
    m_deadline.stop();
    FolderChoice choice = std::exchange(m_choice, {});
    if (!choice)
        return choice;
    if (const QString request = std::exchange(m_request, {}); !request.isEmpty()) {
        QDBusMessage close = QDBusMessage::createMethodCall(service, request, requestInterface, u"Close"_s);
        close.setAutoStartService(false);
        SessionBus::shared().connection().send(close);
    }
    hide();
    deleteLater();
    return choice;
}

} // namespace platform
