// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMetaProperty>
#include <QObject>
#include <QPointer>
#include <QVariant>
#include <functional>

namespace platform {

// Key paths name a property of an object, or, with dots, a property of an object that a property holds:
// "state", "config.encoderTarget". Every key but the last one must hold a QObject (a plain pointer or a
// QSharedPointer to a class derived from it). Main thread only, like the objects themselves.

// The property of that name. A name that the object does not have is a mistake in the program: it ends a
// debug build; otherwise it is logged, and the property answered is not valid: reading it gives an invalid
// variant and writing it does nothing.
QMetaProperty propertyNamed(const QObject *object, const QString &name);
// The same for a property that is to be listened to: it must have a NOTIFY signal as well.
QMetaProperty announcedPropertyNamed(const QObject *object, const QString &name);

// An invalid variant when an object on the way is null.
QVariant valueForKeyPath(QObject *root, const QString &keyPath);
// Does nothing when an object on the way is null.
void setValueForKeyPath(QObject *root, const QString &keyPath, const QVariant &value);

// Calls `changed` after each change of the value at `keyPath`, also when an object on the way is replaced,
// and follows the new one from then on. Every key on the way needs a NOTIFY signal: that is what it listens
// to. The observer may be deleted from inside `changed`, and it may outlive the root: objects on the way that
// are shared go on changing, and it says nothing any more.
class KeyPathObserver : public QObject {
    Q_OBJECT

public:
    KeyPathObserver(QObject *root, const QString &keyPath, std::function<void()> changed, QObject *parent);

private Q_SLOTS:
    void valueChanged();

private:
    void listen();

    QPointer<QObject> m_root;
    QStringList m_keys;
    std::function<void()> m_changed;
    QList<QMetaObject::Connection> m_connections;
};

// Announces the derived properties of `object`. A class names the key paths that a derived property depends
// on, once, in a static function called keyPathsForValuesAffecting and the property's name:
//
//     Q_INVOKABLE static QStringList keyPathsForValuesAffectingCanPlay() { return {"state",
//     "currentOutputURL"}; }
//
// From then on each change of one of these paths emits the NOTIFY signal of `canPlay`, once a change. A
// derived property may depend on another derived one. To be called in the constructor of the class that
// declares the sets.
void announceDerivedProperties(QObject *object);

} // namespace platform
