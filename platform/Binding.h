// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>
#include <functional>

namespace platform {

// A window lists its bindings in one place with these. Each applies the current value at once and again after
// each change, and ends when the control or the source is destroyed. While an object on the key path is null,
// the control keeps what it shows. A name that the control or the source does not have ends a debug build and
// is logged by any other. Main thread only.

enum class BindingDirection {
    // The control follows the source.
    OneWay,
    // The user's changes go back to the source as well, announced by the NOTIFY signal of the control's
    // property.
    TwoWay
};

void bind(QObject *control, const char *property, QObject *source, const QString &keyPath,
    BindingDirection direction = BindingDirection::OneWay);

// For what is not one property of the control. `context` ends the binding with its life.
void bind(
    QObject *context, QObject *source, const QString &keyPath, std::function<void(const QVariant &)> apply);

} // namespace platform
