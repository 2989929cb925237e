// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

class QAbstractButton;
class QLabel;
class QObject;
class QString;

// Binds the text of a control, with its font, colour and alignment, to a platform::AttributedString of
// `source`. A disabled control shows it at the opacity of disabled controls.
void bindTitle(QLabel *label, QObject *source, const QString &keyPath);
void bindTitle(QAbstractButton *button, QObject *source, const QString &keyPath);
