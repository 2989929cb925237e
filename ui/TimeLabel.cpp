// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/TimeLabel.h"

#include "ui/CardStyle.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>

namespace {

constexpr double fontPoints = 64;

double widestDigit(const QFontMetricsF &metrics)
{
    double widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest;
}

} // namespace

TimeLabel::TimeLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFont(CardStyle::font(fontPoints, QFont::Light));
    m_digitWidth = widestDigit(QFontMetricsF(font()));
}

void TimeLabel::setLive(bool live)
{
    if (m_live == live)
        return;
    m_live = live;
    update();
}

void TimeLabel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        m_digitWidth = widestDigit(QFontMetricsF(font()));
    QLabel::changeEvent(event);
}

QList<double> TimeLabel::cellEdges() const
{
    const QFontMetricsF metrics(font());
    QList<double> edges = {0};
    const QString shown = text();
    for (const QChar character : shown)
        edges.append(
            edges.last() + (character.isDigit() ? m_digitWidth : metrics.horizontalAdvance(character)));
    return edges;
}

QSize TimeLabel::sizeHint() const
{
    return QSizeF(cellEdges().last(), QFontMetricsF(font()).capHeight() * 1.5).toSize();
}

// Any width will do, because the text is scaled; the height is that of a line.
QSize TimeLabel::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

void TimeLabel::paintEvent(QPaintEvent *)
{
    const QList<double> edges = cellEdges();
    const QString shown = text();
    const double scale = std::min(1.0, width() / std::max(1.0, edges.last()));
    QPainter painter(this);
    painter.translate(width() / 2.0, height() / 2.0);
    painter.scale(scale, scale);
    painter.setPen(m_live ? CardStyle::colours().text : CardStyle::colours().label);
    const QFontMetricsF metrics(font());
    const double baseline = metrics.capHeight() / 2;
    // Fonts place the colon for lower-case letters; between digits it belongs at half their height.
    const double colonLift = (metrics.capHeight() - metrics.xHeight()) / 2;
    for (qsizetype i = 0; i < shown.size(); ++i) {
        const double spare = edges[i + 1] - edges[i] - metrics.horizontalAdvance(shown[i]);
        const double y = shown[i] == u':' ? baseline - colonLift : baseline;
        painter.drawText(QPointF(edges[i] + (spare - edges.last()) / 2, y), QString(shown[i]));
    }
}
