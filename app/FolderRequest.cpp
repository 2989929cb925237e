// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/FolderRequest.h"

#include <QPointer>
#include <utility>

void FolderRequest::ask(QWidget *window, const QString &title, platform::FolderChoice chosen)
{
    const bool isOnlyOne = !m_isOpen;
    setOpen(true);
    const auto answered
        = [self = QPointer(this), chosen = std::move(chosen), isOnlyOne](const std::optional<QUrl> &folder) {
              chosen(folder);
              if (self && isOnlyOne)
                  QMetaObject::invokeMethod(
                      self, [self] { self->setOpen(false); }, Qt::QueuedConnection);
          };
    // There is no working folder to begin in.
    platform::chooseFolder(window, {title, {}}, answered);
}

void FolderRequest::setOpen(bool open)
{
    if (std::exchange(m_isOpen, open) != open)
        Q_EMIT isOpenChanged();
}
