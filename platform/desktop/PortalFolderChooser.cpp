// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/PortalFolderChooser.h"

#include <QFile>
#include <QGuiApplication>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// The service may have to be started first. The user waits for the chooser and sees nothing meanwhile.
constexpr std::chrono::seconds takenWithin(3);

// So that the chooser stands on the window. On Wayland the toolkit tells the window's handle to itself alone.
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
    open();
    ask(question);
}

PortalFolderChooser::~PortalFolderChooser()
{
    if (const FolderChoice choice = end())
        choice({});
}

void PortalFolderChooser::ask(const FolderQuestion &question)
{
    QVariantMap options{{u"directory"_s, true}, {u"modal"_s, true}};
    // A path here ends with a null byte.
    if (!question.beginIn.isEmpty())
        options.insert(u"current_folder"_s, QFile::encodeName(question.beginIn).append('\0'));
    m_request = PortalRequest::send(u"org.freedesktop.portal.FileChooser"_s, u"OpenFile"_s,
        {handleOf(parentWidget()), question.title}, options, takenWithin,
        [this](PortalRequest::Outcome outcome, const QVariantMap &results) { answered(outcome, results); });
}

void PortalFolderChooser::answered(PortalRequest::Outcome outcome, const QVariantMap &results)
{
    m_request.clear(); // it has ended by itself
    FolderChoice choice = end();
    if (!choice)
        return;
    if (outcome == PortalRequest::Outcome::Failed)
        return m_otherwise(std::move(choice));
    const QUrl folder(results.value(u"uris"_s).toStringList().value(0));
    const bool chosen = outcome == PortalRequest::Outcome::Done && folder.isLocalFile();
    choice(chosen ? std::optional(folder) : std::nullopt);
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
    FolderChoice choice = std::exchange(m_choice, {});
    if (!choice)
        return choice;
    delete m_request;
    hide();
    deleteLater();
    return choice;
}

} // namespace platform
