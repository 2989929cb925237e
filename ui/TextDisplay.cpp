// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/TextDisplay.h"

#include <QTextDocument>

namespace TextDisplay {

namespace {

bool reordersText(QChar character)
{
    const char16_t code = character.unicode();
    const bool mark = code == 0x200e || code == 0x200f || code == 0x061c;
    const bool embedding = code >= 0x202a && code <= 0x202e;
    // The other two of the isolates do no harm: a translation sets a name apart with them, whose direction is
    // its own.
    const bool isolate = code == 0x2066 || code == 0x2067;
    return mark || embedding || isolate;
}

bool endsOrControlsLine(QChar character)
{
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line
        || category == QChar::Separator_Paragraph;
}

} // namespace

QString singleLine(const QString &text)
{
    QString line;
    line.reserve(text.size());
    for (const QChar character : text) {
        if (!reordersText(character))
            line += endsOrControlsLine(character) ? QChar(QChar::Space) : character;
    }
    return line;
}

QString toolTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

} // namespace TextDisplay
