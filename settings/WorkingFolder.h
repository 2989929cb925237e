// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/Inquiry.h"
#include "platform/Seam.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QString>
#include <QUrl>
#include <functional>
#include <optional>

// The folder that new recordings go to: where it is, whether it is there, and the token in the settings that
// finds it again at the next launch. Its disk may not answer: nobody waits for it longer than a moment, and
// what it says later is adopted, unless the user has chosen another folder meanwhile. Main thread only.
class WorkingFolder : public QObject {
    Q_OBJECT

public:
    struct Place {
        QString path; // as it was asked for when nothing was found
        bool isThere = false;
    };
    // Looks for the folder, by its token, or at the path where there is no token. It is called on any thread
    // and may take for ever.
    static platform::Seam<std::function<Place(const QString &path, const QByteArray &token)>> &search();

    // An absolute path; empty when no folder is known.
    QString path() const { return m_path; }
    // Where the stored folder was, as long as its disk owes an answer about it; else empty.
    QString waitingFor() const { return m_waitingFor; }

    // Where the stored folder is; nothing also when its disk does not answer in a moment.
    static std::optional<QString> stored();
    // Takes the stored folder, or none where there is none.
    void restore();
    // Makes it the stored folder; without a folder at the address the stored one stays.
    void store(const QUrl &folder);
    // Uses the folder from now on, whether it could be stored or not.
    void use(const QUrl &folder);
    // Whether something is at the path; from a disk that does not answer in a moment, whether it was when
    // that was last known. A folder that is not there is looked for anew: it may have been renamed, or its
    // disk mounted, so that the path may change.
    bool isThere();

Q_SIGNALS:
    void pathChanged();
    void waitingForChanged();

private:
    void look(const QString &path);
    void adopt(const Place &place);
    void keep(const QString &path, const QByteArray &token);
    void setPath(const QString &path);
    void setWaitingFor(const QString &path);

    QString m_path;
    QString m_waitingFor;
    bool m_isThere = false; // as far as is known
    QByteArray m_token; // of the folder at the path, or of one that was not found; empty when there is none
    platform::Inquiry<Place> m_search;
    QString m_askedFor; // the path of the question that was asked last
    QDeadlineTimer m_askAgain; // although it is not answered
    platform::Inquiry<QByteArray> m_naming; // of the chosen folder, for the settings
};
