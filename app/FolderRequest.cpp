// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/FolderRequest.h"

#include <QPointer>
#include <memory>
#include <utility>

bool FolderRequest::ask(QWidget *window, const QString &title, platform::FolderChoice chosen)
{
    const bool isOnlyOne = !m_isOpen;
    const auto isAnswered = std::make_shared<bool>(false);
    const auto isChosen = std::make_shared<bool>(false);
    const auto answered = [self = QPointer(this), chosen = std::move(chosen), isOnlyOne, isAnswered,
                              isChosen](const std::optional<QUrl> &folder) {
        *isAnswered = true;
        *isChosen = folder.has_value();
        chosen(folder);
        if (self && isOnlyOne)
            QMetaObject::invokeMethod(
                self, [self] { self->setOpen(false); }, Qt::QueuedConnection);
    };
    // There is no working folder to begin in.
    platform::chooseFolder(window, {title, {}}, answered);
    // At once where a folder is being chosen for something else: this question is over, and promises nothing.
    if (!*isAnswered)
        setOpen(true);
    return m_isOpen || *isChosen;
}

void FolderRequest::setOpen(bool open)
{
    if (std::exchange(m_isOpen, open) != open)
        Q_EMIT isOpenChanged();
}
