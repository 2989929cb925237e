// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/ElidedLabel.h"

#include "ui/CardStyle.h"
#include "ui/TextDisplay.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>

namespace {

// Above and below, for letters that hang deeper than the font says, or come from another font: Arabic and
// Indian ones do both.
constexpr int roomForTails = 3;

} // namespace

ElidedLabel::ElidedLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

ElidedLabel::ElidedLabel(const QString &text, QWidget *parent)
    : ElidedLabel(parent)
{
    setText(text);
}

void ElidedLabel::setText(const QString &text)
{
    QLabel::setText(text);
    setToolTip(TextDisplay::toolTip(text));
}

QString ElidedLabel::shortened(int width) const
{
    const QString line = TextDisplay::singleLine(text());
    const QFontMetrics metrics(textFont());
    // The last name of a path says the most; it is only shortened when it does not fit by itself.
    const qsizetype name = line.startsWith(u'/') ? line.lastIndexOf(u'/') : 0;
    const int room = width - metrics.horizontalAdvance(line.mid(name));
    if (name > 0 && room > metrics.height())
        return metrics.elidedText(line.left(name), Qt::ElideMiddle, room) + line.mid(name);
    return metrics.elidedText(line, Qt::ElideMiddle, width);
}

QSize ElidedLabel::sizeHint() const
{
    const int width = fontMetrics().horizontalAdvance(TextDisplay::singleLine(text()));
    return {width + 2 * margin(), minimumSizeHint().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, fontMetrics().height() + 2 * CardStyle::scaled(roomForTails)};
}

QRect ElidedLabel::textRect() const
{
    return rect().adjusted(margin(), 0, -margin(), 0);
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawFrame(&painter);
    paintText(painter, textRect());
}

void ElidedLabel::paintText(QPainter &painter, const QRect &place)
{
    const bool isPath = text().startsWith(u'/');
    const int direction = isPath || layoutDirection() == Qt::LeftToRight ? Qt::TextForceLeftToRight
                                                                         : Qt::TextForceRightToLeft;
    const int flags
        = QStyle::visualAlignment(layoutDirection(), alignment()) | Qt::TextSingleLine | direction;
    painter.setFont(textFont());
    style()->drawItemText(
        &painter, place, flags, palette(), isEnabled(), shortened(place.width()), foregroundRole());
}
