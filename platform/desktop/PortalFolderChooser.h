// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/desktop/FolderChooser.h"
#include "platform/desktop/PortalRequest.h"

#include <QDialog>
#include <QPointer>

namespace platform {

// The desktop's own folder chooser, which runs in another process and is asked for over the session bus. This
// dialog is never seen: it blocks the window for as long as the other one is open. It deletes itself.
class PortalFolderChooser : public QDialog {
    Q_OBJECT

public:
    // `otherwise` takes over the choice where the portal fails.
    using Otherwise = std::function<void(FolderChoice choice)>;

    PortalFolderChooser(
        QWidget *window, const FolderQuestion &question, FolderChoice choice, Otherwise otherwise);
    // Closes what is open.
    ~PortalFolderChooser() override;

    void done(int result) override;

private:
    void ask(const FolderQuestion &question);
    void answered(PortalRequest::Outcome outcome, const QVariantMap &results);
    FolderChoice end();

    FolderChoice m_choice;
    const Otherwise m_otherwise;
    QPointer<PortalRequest> m_request;
};

} // namespace platform
