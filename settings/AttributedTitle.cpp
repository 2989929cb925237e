// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/AttributedTitle.h"

#include "platform/Binding.h"
#include "platform/desktop/AttributedString.h"
#include "ui/CardStyle.h"

#include <QAbstractButton>
#include <QKeySequence>
#include <QLabel>
#include <QPalette>

using platform::AttributedString;

namespace {

void applyAttributes(QWidget *control, const AttributedString &title)
{
    control->setFont(CardStyle::font(title.systemFontSize));
    // The grey of labels is every control's own; where the desktop asks for a high contrast it is brighter.
    if (title.foregroundColor == CardStyle::labelGrey)
        return;
    QPalette colours;
    QColor faded = title.foregroundColor;
    faded.setAlphaF(faded.alphaF() * CardStyle::disabledOpacity);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText}) {
        colours.setColor(role, title.foregroundColor);
        colours.setColor(QPalette::Disabled, role, faded);
    }
    control->setPalette(colours);
}

} // namespace

void bindTitle(QLabel *label, QObject *source, const QString &keyPath)
{
    platform::bind(label, source, keyPath, [label](const QVariant &value) {
        const auto title = value.value<AttributedString>();
        label->setText(title.string);
        label->setAlignment(title.alignment | Qt::AlignVCenter);
        applyAttributes(label, title);
    });
}

void bindTitle(QAbstractButton *button, QObject *source, const QString &keyPath)
{
    // A button's own kind decides on the alignment: a push button's title is centred, a check box's left.
    platform::bind(button, source, keyPath, [button](const QVariant &value) {
        const auto title = value.value<AttributedString>();
        // A new text takes a button's shortcut away.
        const QKeySequence keys = button->shortcut();
        button->setText(title.string);
        button->setShortcut(keys);
        applyAttributes(button, title);
    });
}
