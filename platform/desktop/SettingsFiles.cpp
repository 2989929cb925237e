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

namespace platform {

namespace {

// A program that writes its settings does so in several steps, and often several files.
constexpr std::chrono::milliseconds writtenWithin{100};

constexpr std::array fileNames = {SettingsFiles::gtk4, SettingsFiles::gtk3, SettingsFiles::kde};

QVariantMap valuesIn(const QString &path)
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
{
    read();
    m_soon.setSingleShot(true);
    m_soon.setInterval(writtenWithin);
    connect(&m_soon, &QTimer::timeout, this, &SettingsFiles::readAgain);
    const auto readSoon = [this] { m_soon.start(); };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, readSoon);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, readSoon);
    // What was written before the watch began is read then.
    readSoon();
}

QVariant SettingsFiles::value(const char *file, const char *key) const
{
    return m_values.value(QString::fromLatin1(file)).value(QString::fromLatin1(key));
}

void SettingsFiles::read()
{
    for (const char *name : fileNames) {
        const QString file = QString::fromLatin1(name);
        m_values.insert(file, valuesIn(QDir(m_folder).filePath(file)));
    }
}

void SettingsFiles::readAgain()
{
    watch();
    const auto before = m_values;
    read();
    if (m_values != before)
        Q_EMIT changed();
}

// A file that is replaced takes its watch with it, and its folder tells of the new one.
void SettingsFiles::watch()
{
    QStringList places;
    for (const char *name : fileNames) {
        const QString path = QDir(m_folder).filePath(QString::fromLatin1(name));
        places << existing(path) << existing(QFileInfo(path).path());
    }
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    for (const QString &place : std::as_const(places)) {
        if (!watched.contains(place))
            m_watcher.addPath(place);
    }
}

} // namespace platform
