// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/UserDefaults.h"

#include "platform/Logging.h"
#include "platform/ThreadCheck.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// Three settings fit in many times over; a larger file is not ours and would only cost memory.
constexpr qint64 largestFile = 1 << 20;

// Opening a pipe or a device in the file's place would block the program or never end.
bool canHoldSettings(const QFileInfo &file)
{
    return !file.exists() || (file.isFile() && file.size() <= largestFile);
}

// As people write it into such a file, and as other platforms read it: by its beginning.
bool meansYes(const QString &text)
{
    static const QRegularExpression yes(
        u"^\\s*([yt]|on\\b|[+-]?0*[1-9])"_s, QRegularExpression::CaseInsensitiveOption);
    return yes.match(text).hasMatch();
}

} // namespace

UserDefaults &UserDefaults::standardUserDefaults()
{
    if (const auto &defaults = userDefaults().inUse())
        return *defaults;
    static UserDefaults own(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + u"/flipside/flipside.conf"_s);
    return own;
}

Seam<std::shared_ptr<UserDefaults>> &userDefaults()
{
    static Seam<std::shared_ptr<UserDefaults>> seam(nullptr);
    return seam;
}

UserDefaults::UserDefaults(const QString &path)
    : m_path(path)
{
    if (!canHoldSettings(QFileInfo(path))) {
        qCWarning(lcPlatform, "%s cannot be a settings file, the defaults apply.", qPrintable(path));
        return;
    }
    m_settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
    if (m_settings->status() != QSettings::NoError)
        qCWarning(lcPlatform, "The settings file %s is damaged or unreadable.", qPrintable(path));
}

UserDefaults::~UserDefaults() = default;

QByteArray UserDefaults::dataForKey(const QString &key) const
{
    const QVariant value = objectForKey(key).value_or(QVariant());
    return value.typeId() == QMetaType::QByteArray ? value.toByteArray() : QByteArray();
}

std::optional<bool> UserDefaults::boolForKey(const QString &key) const
{
    // Read from the file it is text, set in this process it is a boolean.
    const std::optional<QVariant> value = objectForKey(key);
    return value ? std::optional(meansYes(value->toString())) : std::nullopt;
}

void UserDefaults::setData(const QByteArray &data, const QString &key)
{
    setObject(data, key);
}

void UserDefaults::setBool(bool value, const QString &key)
{
    setObject(value, key);
}

bool UserDefaults::synchronize()
{
    assertMainThread();
    if (m_settings)
        m_settings->sync();
    if (m_settings && m_settings->status() != QSettings::AccessError)
        return true;
    qCWarning(lcPlatform, "The settings cannot be written to %s.", qPrintable(m_path));
    return false;
}

std::optional<QVariant> UserDefaults::objectForKey(const QString &key) const
{
    assertMainThread();
    if (!m_settings)
        return m_unsaved.contains(key) ? std::optional(m_unsaved.value(key)) : std::nullopt;
    return m_settings->contains(key) ? std::optional(m_settings->value(key)) : std::nullopt;
}

void UserDefaults::setObject(const QVariant &value, const QString &key)
{
    assertMainThread();
    if (!m_settings) {
        m_unsaved.insert(key, value);
        return;
    }
    keepDamagedFile();
    m_settings->setValue(key, value);
}

// What is written next holds only the lines that could be understood.
void UserDefaults::keepDamagedFile()
{
    if (m_settings->status() != QSettings::FormatError || m_damagedFileIsKept)
        return;
    m_damagedFileIsKept = true;
    const QString kept = m_path + u".damaged"_s;
    QFile::remove(kept);
    if (QFile::copy(m_path, kept))
        qCWarning(lcPlatform, "The damaged settings file is kept as %s.", qPrintable(kept));
}

} // namespace platform
