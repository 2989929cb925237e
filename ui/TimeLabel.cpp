// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/TimeLabel.h"

#include "ui/CardStyle.h"
#include "ui/CardWindow.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPaintEvent>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr double fontPoints = 64;

bool haveSameCells(const QString &one, const QString &other)
{
    const auto fits = [](QChar a, QChar b) { return a == b || (a.isDigit() && b.isDigit()); };
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), fits);
}

QGlyphRun shapeOf(QChar character, const QFont &font)
{
    QTextLayout layout(character, font);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(QWIDGETSIZE_MAX);
    line.setPosition(QPointF(0, -line.ascent()));
    layout.endLayout();
    return layout.glyphRuns().value(0);
}

} // namespace

TimeLabel::TimeLabel(QWidget *parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFont(CardStyle::font(fontPoints, QFont::Light));
    measure();
}

void TimeLabel::measure()
{
    const QFontMetricsF metrics(font());
    m_measures = {};
    m_measures.overhang = -metrics.maxWidth();
    for (const QChar character : u"0123456789:."_s) {
        const double width = metrics.horizontalAdvance(character);
        m_measures.characters[character] = {width, shapeOf(character, font())};
        if (character.isDigit())
            m_measures.digitWidth = std::max(m_measures.digitWidth, width);
        m_measures.overhang = std::max(
            {m_measures.overhang, -metrics.leftBearing(character), -metrics.rightBearing(character)});
    }
    m_measures.capHeight = metrics.capHeight();
    // Fonts place the colon for lower-case letters; between digits it belongs at half their height.
    m_measures.colonLift = (metrics.capHeight() - metrics.xHeight()) / 2;
    placeCells();
}

void TimeLabel::placeCells()
{
    m_edges = {0};
    for (const QChar character : std::as_const(m_text)) {
        const double width
            = character.isDigit() ? m_measures.digitWidth : m_measures.characters.value(character).width;
        m_edges.append(m_edges.last() + width);
    }
    updateGeometry();
    update();
}

void TimeLabel::setText(const QString &text)
{
    const QString before = std::exchange(m_text, text);
    if (!haveSameCells(before, m_text))
        return placeCells();
    for (qsizetype i = 0; i < m_text.size(); ++i) {
        if (before[i] != m_text[i])
            update(cell(i));
    }
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
        measure();
    QWidget::changeEvent(event);
}

QSize TimeLabel::sizeHint() const
{
    return QSizeF(m_edges.last(), m_measures.capHeight * 1.5).toSize();
}

// Any width will do, because the text is scaled; the height is that of a line.
QSize TimeLabel::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

double TimeLabel::scale() const
{
    return std::min(1.0, width() / std::max(1.0, m_edges.last()));
}

// With all that its character may cover.
QRect TimeLabel::cell(qsizetype i) const
{
    const double middle = m_edges.last() / 2;
    const double left = m_edges[i] - middle - m_measures.overhang;
    const double right = m_edges[i + 1] - middle + m_measures.overhang;
    const QRectF scaled(width() / 2.0 + left * scale(), 0, (right - left) * scale(), height());
    return scaled.toAlignedRect().adjusted(-1, 0, 1, 0);
}

void TimeLabel::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    CardWindow::paintGround(painter, this, event->rect());
    painter.translate(width() / 2.0, height() / 2.0);
    painter.scale(scale(), scale());
    painter.setPen(m_live ? CardStyle::colours().text : CardStyle::colours().label);
    const double baseline = m_measures.capHeight / 2;
    for (qsizetype i = 0; i < m_text.size(); ++i) {
        if (!cell(i).intersects(event->rect()))
            continue;
        const auto [width, shape] = m_measures.characters.value(m_text[i]);
        const double spare = m_edges[i + 1] - m_edges[i] - width;
        const double y = m_text[i] == u':' ? baseline - m_measures.colonLift : baseline;
        painter.drawGlyphRun(QPointF(m_edges[i] + (spare - m_edges.last()) / 2, y), shape);
    }
}
