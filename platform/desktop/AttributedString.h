// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QMetaType>
#include <QString>

namespace platform {

// A text with attributes that apply to all of it, in the desktop's own font.
struct AttributedString {
    QString string;
    QColor foregroundColor;
    Qt::Alignment alignment;
    // Points of a card, which are device-independent pixels for the usual desktop font.
    double systemFontSize = 13.0;

    bool operator==(const AttributedString &) const = default;
};

} // namespace platform

Q_DECLARE_METATYPE(platform::AttributedString)
