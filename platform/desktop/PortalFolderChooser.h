// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/desktop/FolderChooser.h"

#include <QDialog>
#include <QTimer>

class QDBusMessage;

namespace platform {

// The desktop's own folder chooser, which runs in another process and is asked for over the session bus. This
// dialog is never seen: it blocks the window for as long as the other one is open. It deletes itself.
class PortalFolderChooser : public QDialog {
    Q_OBJECT

public:
    // `otherwise` takes over the choice where there is no such service, where it does not answer within some
    // seconds, and where it ends, or the bus, before the user has chosen.
    using Otherwise = std::function<void(FolderChoice choice)>;

    PortalFolderChooser(
        QWidget *window, const FolderQuestion &question, FolderChoice choice, Otherwise otherwise);
    // Closes what is open.
    ~PortalFolderChooser() override;

    void done(int result) override;

private Q_SLOTS:
    void answered(uint response, const QVariantMap &results);
    void busHasGone();

private:
    QDBusMessage openFile(const FolderQuestion &question, const QString &token) const;
    void ask(const FolderQuestion &question);
    void listenTo(const QString &request);
    void opened(const QDBusMessage &first);
    void giveUp(const QString &reason);
    FolderChoice end();

    FolderChoice m_choice;
    Otherwise m_otherwise;
    QString m_request; // the path of what was asked; empty when it has ended
    QTimer m_deadline;
};

} // namespace platform
