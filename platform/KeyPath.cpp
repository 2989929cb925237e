// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/KeyPath.h"

#include "platform/Logging.h"
#include "platform/ThreadCheck.h"

#include <QMetaMethod>

namespace platform {

namespace {

// Written so that it stands in the log of every build.
void demand(bool holds, const QObject *object, const char *what, const QString &name)
{
    if (holds)
        return;
    qCCritical(lcPlatform, "%s has no %s %s.", object->metaObject()->className(), what, qPrintable(name));
    Q_ASSERT_X(false, "key path", qPrintable(name));
}

// The object that holds the last key; null when one on the way is.
QObject *holderOfLastKey(QObject *root, const QStringList &keys)
{
    QObject *object = root;
    for (qsizetype i = 0; object && i + 1 < keys.size(); ++i)
        object = propertyNamed(object, keys[i]).read(object).value<QObject *>();
    return object;
}

QStringList declaredKeyPaths(QObject *object, const char *property)
{
    const QMetaObject *meta = object->metaObject();
    QByteArray name = property;
    name[0] = QChar::fromLatin1(name[0]).toUpper().toLatin1();
    const int index = meta->indexOfMethod("keyPathsForValuesAffecting" + name + "()");
    QStringList keyPaths;
    if (index >= 0)
        meta->method(index).invoke(object, Qt::DirectConnection, Q_RETURN_ARG(QStringList, keyPaths));
    return keyPaths;
}

} // namespace

QMetaProperty propertyNamed(const QObject *object, const QString &name)
{
    assertMainThread();
    const QMetaObject *meta = object->metaObject();
    const QMetaProperty property = meta->property(meta->indexOfProperty(name.toUtf8().constData()));
    demand(property.isValid(), object, "property", name);
    return property;
}

QMetaProperty announcedPropertyNamed(const QObject *object, const QString &name)
{
    const QMetaProperty property = propertyNamed(object, name);
    demand(property.hasNotifySignal(), object, "signal for a change of", name);
    return property;
}

QVariant valueForKeyPath(QObject *root, const QString &keyPath)
{
    const QStringList keys = keyPath.split(u'.');
    QObject *holder = holderOfLastKey(root, keys);
    return holder ? propertyNamed(holder, keys.last()).read(holder) : QVariant();
}

void setValueForKeyPath(QObject *root, const QString &keyPath, const QVariant &value)
{
    const QStringList keys = keyPath.split(u'.');
    if (QObject *holder = holderOfLastKey(root, keys))
        propertyNamed(holder, keys.last()).write(holder, value);
}

KeyPathObserver::KeyPathObserver(
    QObject *root, const QString &keyPath, std::function<void()> changed, QObject *parent)
    : QObject(parent)
    , m_root(root)
    , m_keys(keyPath.split(u'.'))
    , m_changed(std::move(changed))
{
    listen();
}

void KeyPathObserver::listen()
{
    static const QMetaMethod slot = staticMetaObject.method(staticMetaObject.indexOfSlot("valueChanged()"));
    for (const QMetaObject::Connection &connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    QObject *object = m_root;
    for (const QString &key : std::as_const(m_keys)) {
        if (!object)
            return;
        const QMetaProperty property = announcedPropertyNamed(object, key);
        m_connections.append(connect(object, property.notifySignal(), this, slot));
        object = &key == &m_keys.last() ? nullptr : property.read(object).value<QObject *>();
    }
}

void KeyPathObserver::valueChanged()
{
    if (!m_root)
        return;
    // With a single key the object at its end cannot have been replaced.
    if (m_keys.size() > 1)
        listen();
    // A copy, because the call may delete this observer.
    const auto changed = m_changed;
    changed();
}

void announceDerivedProperties(QObject *object)
{
    const QMetaObject *meta = object->metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const QMetaMethod announcement = meta->property(i).notifySignal();
        for (const QString &keyPath : declaredKeyPaths(object, meta->property(i).name())) {
            new KeyPathObserver(
                object, keyPath,
                [object, announcement] { announcement.invoke(object, Qt::DirectConnection); }, object);
        }
    }
}

} // namespace platform
