// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/AttributedTitle.h"

#include "platform/Binding.h"
#include "platform/desktop/AttributedString.h"
#include "ui/CardStyle.h"

#include <QAbstractButton>
#include <QKeySequence>
#include <QLabel>

using namespace Qt::StringLiterals;
using platform::AttributedString;

namespace {

void applyAttributes(QWidget *control, const AttributedString &title)
{
    control->setFont(CardStyle::font(title.systemFontSize));
    const QColor color = title.foregroundColor;
    const QString rgb = u"%1, %2, %3"_s.arg(color.red()).arg(color.green()).arg(color.blue());
    const auto rule
        = [&rgb](double opacity) { return u"color: rgba(%1, %2%);"_s.arg(rgb).arg(opacity * 100); };
    control->setStyleSheet(u"*{%1} *:disabled{%2}"_s.arg(
        rule(color.alphaF()), rule(color.alphaF() * CardStyle::disabledOpacity)));
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
