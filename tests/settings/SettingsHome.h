// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/UserDefaults.h"
#include "platform/desktop/FileManager.h"

#include <QAbstractButton>
#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QUrl>
#include <QWidget>
#include <gtest/gtest.h>
#include <optional>

namespace testbed {

// A user with settings of their own and a file manager that only takes notes.
class SettingsHome : public testing::Test {
protected:
    SettingsHome() { restart(); }

    // The settings as another launch finds them.
    void restart()
    {
        m_settings.reset();
        m_settings.emplace(
            platform::userDefaults().replace(std::make_shared<platform::UserDefaults>(settingsFile)));
    }
    QString makeFolder(const QString &name)
    {
        EXPECT_TRUE(QDir(home.path()).mkdir(name)) << qPrintable(name);
        return home.filePath(name);
    }
    QByteArray settings()
    {
        platform::UserDefaults::standardUserDefaults().synchronize();
        QFile file(settingsFile);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir home;
    const QString settingsFile = home.filePath(QStringLiteral("config/flipside.conf"));
    QList<QUrl> shown;
    QWidget mainWindow;

private:
    std::optional<platform::SeamGuard> m_settings;
    const platform::SeamGuard m_fileManager
        = platform::fileManager().replace([this](const QUrl &url) { shown.append(url); });
};

// Keys and clicks are for the control's own name in the interface file.
template <typename Control> Control *control(QWidget *window, const char *name)
{
    auto *found = window->findChild<Control *>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
}

// Every button whose tool tip names a key has just this one as its shortcut.
inline void expectKeysOfToolTips(const QWidget *window, int buttons)
{
    static const QRegularExpression named(QStringLiteral("\\((Alt\\+.)\\)$"));
    for (const auto *button : window->findChildren<QAbstractButton *>()) {
        const auto match = named.match(button->toolTip());
        buttons -= match.hasMatch();
        EXPECT_EQ(button->shortcut(), QKeySequence(match.captured(1))) << qPrintable(button->objectName());
    }
    EXPECT_EQ(buttons, 0);
}

} // namespace testbed
