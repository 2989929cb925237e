// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/WorkingFolder.h"

#include "platform/Bookmark.h"
#include "platform/Logging.h"
#include "platform/UserDefaults.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;
using platform::LateAnswer;

namespace {

const QString workingPathKey = u"HBWorkingPathKey"_s;
// As long as a window may fail to respond.
constexpr std::chrono::milliseconds moment(150);
// After that it is asked again: the disk may have been mounted anew, which does not release an earlier
// question.
constexpr std::chrono::seconds patience(20);

QByteArray storedToken()
{
    return platform::UserDefaults::standardUserDefaults().dataForKey(workingPathKey);
}

WorkingFolder::Place searchDisk(const QString &path, const QByteArray &token)
{
    if (const auto found = platform::folderForBookmarkData(token))
        return {found->toLocalFile(), true};
    // Another folder of that name does not count: one that waits for a disk to be mounted, for example.
    const QFileInfo entry(path);
    return {path, !path.isEmpty() && entry.exists() && (token.isEmpty() || !entry.isDir())};
}

} // namespace

std::optional<QString> WorkingFolder::stored()
{
    const auto place = platform::askAndWait<Place>(
        [token = storedToken(), find = search().inUse()] { return find({}, token); }, moment);
    return place && place->isThere ? std::optional(place->path) : std::nullopt;
}

platform::Seam<std::function<WorkingFolder::Place(const QString &, const QByteArray &)>> &
WorkingFolder::search()
{
    static platform::Seam<std::function<Place(const QString &, const QByteArray &)>> seam(searchDisk);
    return seam;
}

void WorkingFolder::restore()
{
    // What is under way already ends in the stored folder as well.
    if (m_naming.isPending() || !m_waitingFor.isEmpty())
        return;
    m_token = storedToken();
    if (m_token.isEmpty())
        adopt({});
    else
        look({});
}

void WorkingFolder::look(const QString &path)
{
    // A disk that does not answer holds a thread: one is enough, for as long as it may still answer.
    if (m_search.isPending() && m_askedFor == path && !m_askAgain.hasExpired())
        return;
    m_askedFor = path;
    m_askAgain.setRemainingTime(patience);
    const auto question = [path, token = m_token, find = search().inUse()] { return find(path, token); };
    const auto place = m_search.askAndWait(
        question, moment, LateAnswer::Adopted, [this](const std::optional<Place> &answer) {
            if (answer)
                adopt(*answer);
            else if (!m_search.isPending())
                setWaitingFor({}); // nobody could ask
        });
    if (place)
        return adopt(*place);
    qCWarning(lcSettings, "The disk of the working folder does not answer.");
    if (m_path.isEmpty())
        setWaitingFor(platform::pathInBookmarkData(m_token));
}

void WorkingFolder::adopt(const Place &place)
{
    m_isThere = place.isThere;
    setWaitingFor({});
    setPath(place.path);
}

void WorkingFolder::use(const QUrl &folder)
{
    m_search.cancel();
    setWaitingFor({});
    const QString path = folder.toLocalFile();
    m_isThere = true; // the user has just seen it
    const QByteArray token = storedToken();
    m_token = platform::pathInBookmarkData(token) == path ? token : QByteArray();
    setPath(path);
}

void WorkingFolder::store(const QUrl &folder)
{
    const QString path = folder.toLocalFile();
    const auto token = m_naming.askAndWait([folder] { return platform::bookmarkDataForFolder(folder); },
        moment, LateAnswer::Adopted,
        [this, path](const std::optional<QByteArray> &answer) {
            if (answer)
                keep(path, *answer);
        });
    if (token)
        keep(path, *token);
}

void WorkingFolder::keep(const QString &path, const QByteArray &token)
{
    if (!token.isEmpty())
        platform::UserDefaults::standardUserDefaults().setData(token, workingPathKey);
    if (path == m_path)
        m_token = token;
}

bool WorkingFolder::isThere()
{
    if (!m_path.isEmpty() || !m_token.isEmpty())
        look(m_path);
    return m_isThere;
}

void WorkingFolder::setPath(const QString &path)
{
    if (m_path == path)
        return;
    m_path = path;
    Q_EMIT pathChanged();
}

void WorkingFolder::setWaitingFor(const QString &path)
{
    if (m_waitingFor == path)
        return;
    m_waitingFor = path;
    Q_EMIT waitingForChanged();
}
