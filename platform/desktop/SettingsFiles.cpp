// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/SettingsFiles.h"

#include "platform/ThreadCheck.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <array>
#include <chrono>
#include <utility>

namespace platform {

namespace {

// A program that writes its settings does so in several steps, and often several files.
constexpr std::chrono::milliseconds writtenWithin{100};
// Nothing depends on it: what comes later is adopted.
constexpr std::chrono::seconds answeredWithin{1};

constexpr std::array fileNames = {SettingsFiles::gtk4, SettingsFiles::gtk3, SettingsFiles::kde};

QVariantMap valuesInFile(const QString &path)
{
    QVariantMap values;
    const QSettings file(path, QSettings::IniFormat);
    const QStringList keys = file.allKeys();
    for (const QString &key : keys)
        values.insert(key, file.value(key));
    return values;
}

// The path, or the nearest folder on the way to it that exists.
QString existing(QString path)
{
    while (!QFileInfo::exists(path) && !QDir(path).isRoot())
        path = QFileInfo(path).path();
    return path;
}

} // namespace

SettingsFiles &SettingsFiles::shared()
{
    assertMainThread();
    // Never destroyed: those that listen to it may go after the application object.
    static auto *const files
        = new SettingsFiles(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    return *files;
}

SettingsFiles::SettingsFiles(const QString &configFolder)
    : m_folder(configFolder)
    , m_values(valuesIn(configFolder))
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(writtenWithin);
    connect(&m_soon, &QTimer::timeout, this, &SettingsFiles::lookAgain);
    const auto lookSoon = [this] { m_soon.start(); };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, lookSoon);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, lookSoon);
    lookSoon();
}

QVariant SettingsFiles::value(const char *file, const char *key) const
{
    return m_values.value(QString::fromLatin1(file)).value(QString::fromLatin1(key));
}

SettingsFiles::Values SettingsFiles::valuesIn(const QString &folder)
{
    Values values;
    for (const char *name : fileNames) {
        const QString file = QString::fromLatin1(name);
        values.insert(file, valuesInFile(QDir(folder).filePath(file)));
    }
    return values;
}

// A file that is replaced takes its watch with it, and its folder tells of the new one.
SettingsFiles::Look SettingsFiles::look(const QString &folder)
{
    QStringList places;
    for (const char *name : fileNames) {
        const QString path = QDir(folder).filePath(QString::fromLatin1(name));
        places << existing(path) << existing(QFileInfo(path).path());
    }
    return {places, valuesIn(folder)};
}

// One question at a time: its disk may hold it for ever.
void SettingsFiles::lookAgain()
{
    m_isOutdated = m_question.isPending();
    if (m_isOutdated)
        return;
    m_question.ask([folder = m_folder] { return look(folder); }, answeredWithin, LateAnswer::Adopted,
        [this](const std::optional<Look> &seen) {
            if (seen)
                adopt(*seen);
        });
}

// What was written before the watch began is read after it.
void SettingsFiles::adopt(const Look &seen)
{
    if (watch(seen.places) || m_isOutdated)
        m_soon.start();
    if (std::exchange(m_values, seen.values) != seen.values)
        Q_EMIT changed();
}

// True when there is one more.
bool SettingsFiles::watch(const QStringList &places)
{
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    bool isOneMore = false;
    for (const QString &place : places) {
        if (!watched.contains(place))
            isOneMore |= m_watcher.addPath(place);
    }
    return isOneMore;
}

} // namespace platform
