// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/UserDefaults.h"

#include "platform/Inquiry.h"
#include "platform/Logging.h"
#include "platform/ThreadCheck.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QStandardPaths>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace platform {

namespace {

// Three settings fit in many times over; a larger file is not ours and would only cost memory.
constexpr qint64 largestFile = 1 << 20;

// As long as a window may fail to respond.
constexpr auto moment = 150ms;
constexpr auto lastMoment = 1s;

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

// The file as the thread that writes it sees it, too.
class UserDefaults::File : public std::enable_shared_from_this<File> {
public:
    File(QString path, bool isDamaged)
        : m_path(std::move(path))
        , m_isDamaged(isDamaged)
    {
    }

    void set(const QString &key, const QVariant &value);
    void beginWriting();
    // False when something is not in the file by then.
    bool waitUntilWritten(std::chrono::milliseconds deadline);

private:
    void write();
    bool write(const QHash<QString, QVariant> &values);
    void keepDamaged() const;

    const QString m_path;
    bool m_isDamaged; // and not kept yet; of the writing thread, like the next
    bool m_isRefused = false;
    std::mutex m_mutex; // guards what follows
    std::condition_variable m_rested;
    QHash<QString, QVariant> m_unwritten;
    bool m_isWriting = false;
};

void UserDefaults::File::set(const QString &key, const QVariant &value)
{
    const std::scoped_lock lock(m_mutex);
    m_unwritten.insert(key, value);
}

void UserDefaults::File::beginWriting()
{
    const std::scoped_lock lock(m_mutex);
    if (!m_unwritten.isEmpty() && !m_isWriting)
        m_isWriting = runOnSpareThread([self = shared_from_this()] { self->write(); });
}

void UserDefaults::File::write()
{
    std::unique_lock lock(m_mutex);
    bool isWritten = true;
    while (isWritten && !m_unwritten.isEmpty()) {
        const auto values = m_unwritten;
        lock.unlock();
        isWritten = write(values);
        lock.lock();
        // One that was set anew meanwhile is still to come.
        if (isWritten)
            m_unwritten.removeIf([&](const auto &one) { return one.value() == values.value(one.key()); });
    }
    m_isWriting = false;
    m_rested.notify_all();
}

bool UserDefaults::File::write(const QHash<QString, QVariant> &values)
{
    if (std::exchange(m_isDamaged, false))
        keepDamaged();
    QSettings settings(m_path, QSettings::IniFormat);
    for (auto one = values.begin(); one != values.end(); ++one)
        settings.setValue(one.key(), one.value());
    settings.sync();
    const bool isWritten = settings.status() != QSettings::AccessError;
    if (!std::exchange(m_isRefused, !isWritten) && !isWritten)
        qCWarning(lcPlatform, "The settings cannot be written to %s.", qPrintable(m_path));
    return isWritten;
}

// What is written next holds only the lines that could be understood.
void UserDefaults::File::keepDamaged() const
{
    const QString kept = m_path + u".damaged"_s;
    QFile::remove(kept);
    if (QFile::copy(m_path, kept))
        qCWarning(lcPlatform, "The damaged settings file is kept as %s.", qPrintable(kept));
}

bool UserDefaults::File::waitUntilWritten(std::chrono::milliseconds deadline)
{
    std::unique_lock lock(m_mutex);
    if (!m_rested.wait_for(lock, deadline, [this] { return !m_isWriting; }))
        qCWarning(lcPlatform, "The disk of %s does not answer.", qPrintable(m_path));
    return m_unwritten.isEmpty();
}

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
    const QSettings settings(path, QSettings::IniFormat);
    const QStringList keys = settings.allKeys();
    for (const QString &key : keys)
        m_values.insert(key, settings.value(key));
    if (settings.status() != QSettings::NoError)
        qCWarning(lcPlatform, "The settings file %s is damaged or unreadable.", qPrintable(path));
    m_file = std::make_shared<File>(path, settings.status() == QSettings::FormatError);
}

UserDefaults::~UserDefaults()
{
    if (!m_file)
        return;
    m_file->beginWriting();
    m_file->waitUntilWritten(lastMoment);
}

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
    if (m_file) {
        m_file->beginWriting();
        return m_file->waitUntilWritten(moment);
    }
    qCWarning(lcPlatform, "The settings cannot be written to %s.", qPrintable(m_path));
    return false;
}

std::optional<QVariant> UserDefaults::objectForKey(const QString &key) const
{
    assertMainThread();
    return m_values.contains(key) ? std::optional(m_values.value(key)) : std::nullopt;
}

void UserDefaults::setObject(const QVariant &value, const QString &key)
{
    assertMainThread();
    m_values.insert(key, value);
    if (!m_file)
        return;
    m_file->set(key, value);
    m_file->beginWriting();
}

} // namespace platform
