// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/Binding.h"

#include "platform/KeyPath.h"

#include <QPointer>

namespace platform {

void bind(
    QObject *context, QObject *source, const QString &keyPath, std::function<void(const QVariant &)> apply)
{
    const auto update = [source = QPointer(source), keyPath, apply = std::move(apply)] {
        if (!source)
            return;
        const QVariant value = valueForKeyPath(source, keyPath);
        if (value.isValid())
            apply(value);
    };
    update();
    new KeyPathObserver(source, keyPath, update, context);
}

void bind(QObject *control, const char *property, QObject *source, const QString &keyPath,
    BindingDirection direction)
{
    const QString name = QString::fromLatin1(property);
    const QMetaProperty bound = propertyNamed(control, name);
    bind(control, source, keyPath, [control, bound](const QVariant &value) { bound.write(control, value); });
    if (direction == BindingDirection::OneWay)
        return;
    new KeyPathObserver(
        control, name,
        [control, bound, source = QPointer(source), keyPath] {
            if (source)
                setValueForKeyPath(source, keyPath, bound.read(control));
        },
        control);
}

} // namespace platform
