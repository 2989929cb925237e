// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/Commands.h"

#include <QDBusAbstractAdaptor>
#include <QDBusMessage>
#include <QStringList>

// The one card of a session, as the desktop and other processes of the program know it: the owner of the
// program's name on the session bus. Main thread only.
class DesktopService : public QObject {
    Q_OBJECT

public:
    // Outlived by the commands. `present` brings the card to the front, with the token of who asks.
    DesktopService(Commands *commands, std::function<void(const QString &token)> present);

    // Takes the name, unless another process has it: one of those that start at once gets it. False when this
    // process is not to be the card. Without a bus every process is one.
    bool claim();
    // Gives the name back, so that the next start is not sent to a card that is going.
    void release();

    // Answers the message when the command has been carried out or refused; for Quit before it is.
    void run(Command command, const QDBusMessage &message);
    void present(const QString &token) const { m_present(token); }
    QVariantMap status() const { return m_commands->status(); }

Q_SIGNALS:
    void quitRequested();

private:
    bool announce();
    void claimAgain();

    Commands *m_commands;
    const std::function<void(const QString &token)> m_present;
};

// What desktops ask of a program that the bus can start. The actions have the names of the commands.
class ApplicationAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationAdaptor(DesktopService *service);

public Q_SLOTS:
    void Activate(const QVariantMap &platform_data);
    // Refused: there is nothing that the program opens.
    void Open(const QStringList &uris, const QVariantMap &platform_data, const QDBusMessage &message);
    void ActivateAction(const QString &action_name, const QVariantList &parameter,
        const QVariantMap &platform_data, const QDBusMessage &message);

private:
    DesktopService *m_service;
};

// What the program's own command line asks.
class RecorderAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "io.github.flipside_recorder.Flipside.Recorder")

public:
    explicit RecorderAdaptor(DesktopService *service);

public Q_SLOTS:
    // Answers when the command has been carried out, with what is still to come, often nothing; a refusal is
    // an error.
    QString Run(const QString &command, const QDBusMessage &message);
    // As Commands::status().
    QVariantMap Status();

private:
    DesktopService *m_service;
};
