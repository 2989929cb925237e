// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/StatusLabel.h"

#include "platform/desktop/MotionPreference.h"
#include "ui/CardStyle.h"
#include "ui/ControlPaint.h"
#include "ui/IconPaths.h"
#include "ui/TextDisplay.h"

#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QTimerEvent>
#include <algorithm>

namespace {

constexpr int markSide = 15;
constexpr int markGap = 5;
constexpr int blinkMilliseconds = 1000;
constexpr double dimmedOpacity = 0.35;
// Of a long text, beside one of the usual size.
constexpr double smallestText = 0.8;

QPainterPath pathOf(StatusLabel::Mark mark)
{
    switch (mark) {
    case StatusLabel::RecordingMark:
        return IconPaths::record();
    case StatusLabel::PausedMark:
        return IconPaths::pause();
    case StatusLabel::PlayingMark:
        return IconPaths::play();
    case StatusLabel::WarningMark:
        return IconPaths::warning();
    case StatusLabel::NoMark:
        break;
    }
    return {};
}

} // namespace

StatusLabel::StatusLabel(QWidget *parent)
    : ElidedLabel(parent)
{
}

void StatusLabel::setMark(Mark mark)
{
    if (m_mark == mark)
        return;
    m_mark = mark;
    m_dimmed = false;
    setForegroundRole(mark == WarningMark ? QPalette::BrightText : QPalette::WindowText);
    startOrStopTimer();
    update();
    Q_EMIT markChanged();
}

int StatusLabel::roomForMark() const
{
    return m_mark == NoMark ? 0 : CardStyle::scaled(markSide + markGap);
}

QSize StatusLabel::sizeHint() const
{
    return ElidedLabel::sizeHint() + QSize(roomForMark(), 0);
}

QFont StatusLabel::textFont() const
{
    QFont fitting = font();
    const int room = ElidedLabel::textRect().width() - roomForMark();
    const QString line = TextDisplay::singleLine(text());
    while (QFontMetrics(fitting).horizontalAdvance(line) > room
        && fitting.pixelSize() > font().pixelSize() * smallestText)
        fitting.setPixelSize(fitting.pixelSize() - 1);
    return fitting;
}

QRect StatusLabel::textRect() const
{
    const QRect room = ElidedLabel::textRect();
    const int most = room.width() - roomForMark();
    // A whole pixel more, so that rounding shortens nothing.
    const int width = std::min(most, QFontMetrics(textFont()).horizontalAdvance(shortened(most)) + 1);
    const QRect group = QStyle::alignedRect(
        layoutDirection(), alignment(), QSize(width + roomForMark(), room.height()), room);
    return QStyle::visualRect(layoutDirection(), group, group.adjusted(roomForMark(), 0, 0, 0));
}

QRectF StatusLabel::markRect(const QRect &text) const
{
    const int side = CardStyle::scaled(markSide);
    const int gap = CardStyle::scaled(markGap);
    const int left = layoutDirection() == Qt::LeftToRight ? text.left() - gap - side : text.right() + 1 + gap;
    return QRectF(left, (height() - side) / 2.0, side, side);
}

QColor StatusLabel::markColour() const
{
    return m_mark == RecordingMark ? CardStyle::colours().recordMark : palette().color(foregroundRole());
}

// To lay out the text costs more than all else; where the mark alone blinks, nothing else is drawn.
void StatusLabel::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!m_markPlace.toAlignedRect().contains(event->rect())) {
        const QRect text = textRect();
        paintText(painter, text);
        m_markPlace = m_mark == NoMark ? QRectF() : markRect(text);
    }
    if (m_mark == NoMark)
        return;
    painter.setOpacity(m_dimmed ? dimmedOpacity : 1);
    ControlPaint::icon(painter, m_markPlace, pathOf(m_mark), markColour());
}

void StatusLabel::startOrStopTimer()
{
    if (m_mark == RecordingMark)
        connect(&platform::MotionPreference::shared(), &platform::MotionPreference::changed, this,
            &StatusLabel::followMotion, Qt::UniqueConnection);
    const bool blinks
        = m_mark == RecordingMark && isVisible() && platform::MotionPreference::shared().animationsAllowed();
    if (!blinks)
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start(blinkMilliseconds, this);
}

void StatusLabel::followMotion()
{
    m_dimmed = false;
    startOrStopTimer();
    update();
}

void StatusLabel::showEvent(QShowEvent *event)
{
    startOrStopTimer();
    ElidedLabel::showEvent(event);
}

void StatusLabel::hideEvent(QHideEvent *event)
{
    startOrStopTimer();
    ElidedLabel::hideEvent(event);
}

void StatusLabel::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return ElidedLabel::timerEvent(event);
    m_dimmed = !m_dimmed;
    update(m_markPlace.toAlignedRect());
}
