// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/LevelMeter.h"

#include "ui/CardStyle.h"
#include "ui/CardWindow.h"

#include <QEvent>
#include <QLinearGradient>
#include <QPaintEvent>
#include <QPainter>
#include <QTimerEvent>
#include <QWindow>

namespace {

constexpr int intervalMilliseconds = 50;
// For something to move along with, which comes as often when nothing is wrong.
constexpr int patienceMilliseconds = 100;
constexpr double barHeight = 4;
constexpr double barGap = 3;
// A longer step makes no difference: by then the bars have fallen to rest.
constexpr std::chrono::milliseconds longestStep{10000};

constexpr QColor trackColour{0x1a, 0x1d, 0x20};
constexpr QColor green{0x3f, 0xa4, 0x5c};
constexpr QColor yellow{0xf0, 0xc2, 0x2f};

// Green up to -18 dB, where speech belongs, yellow at -9 dB, and red for the last few.
QLinearGradient gradient(double width)
{
    QLinearGradient colours(0, 0, width, 0);
    const auto at = [](float decibels) { return 1 - decibels / LevelBallistics::floorDecibels; };
    colours.setColorAt(0, green);
    colours.setColorAt(at(-18), green);
    colours.setColorAt(at(-9), yellow);
    colours.setColorAt(at(-1), CardStyle::colours().recordMark);
    return colours;
}

QRectF clipMark(const QRectF &track)
{
    return track.adjusted(track.width() - 1.5 * track.height(), 0, 0, 0);
}

} // namespace

LevelMeter::LevelMeter(QWidget *parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Input level"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void LevelMeter::setSource(Source source)
{
    m_source = std::move(source);
}

void LevelMeter::setRunning(bool running)
{
    m_running = running;
    startOrStopTimer();
}

void LevelMeter::moveAlong()
{
    if (!m_timer.isActive())
        return;
    advance();
    m_timer.start(patienceMilliseconds, this);
}

int LevelMeter::percent() const
{
    return qRound(100 * std::max(m_bars[0].ballistics.position(), m_bars[1].ballistics.position()));
}

QSize LevelMeter::sizeHint() const
{
    return {CardStyle::scaled(372), CardStyle::scaled(2 * barHeight + barGap)};
}

QSize LevelMeter::minimumSizeHint() const
{
    return {CardStyle::scaled(60), sizeHint().height()};
}

// A window that is minimised or on another desktop stays "visible" for the toolkit; only its exposure tells.
bool LevelMeter::canBeSeen() const
{
    const QWindow *handle = window()->windowHandle();
    return isVisible() && handle && handle->isExposed();
}

bool LevelMeter::isAtRest() const
{
    return m_bars[0].ballistics.isAtRest() && m_bars[1].ballistics.isAtRest();
}

void LevelMeter::watchWindow()
{
    if (QWindow *handle = window()->windowHandle())
        handle->installEventFilter(this);
}

void LevelMeter::startOrStopTimer()
{
    if (!canBeSeen() || (!m_running && isAtRest())) {
        m_timer.stop();
    } else if (!m_timer.isActive()) {
        // What has piled up in the meantime is out of date.
        if (m_running && m_source)
            m_source();
        m_sinceLast.start();
        m_timer.start(intervalMilliseconds, this);
    }
}

bool LevelMeter::event(QEvent *event)
{
    if (event->type() == QEvent::Show)
        watchWindow();
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide)
        startOrStopTimer();
    return QWidget::event(event);
}

bool LevelMeter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Expose)
        startOrStopTimer();
    return QWidget::eventFilter(watched, event);
}

void LevelMeter::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return QWidget::timerEvent(event);
    advance();
    m_timer.start(intervalMilliseconds, this);
    startOrStopTimer();
}

void LevelMeter::advance()
{
    const auto elapsed = std::min(std::chrono::milliseconds(m_sinceLast.restart()), longestStep);
    const std::array<float, 2> peaks = m_running && m_source ? m_source() : std::array<float, 2>{};
    const double ratio = devicePixelRatioF();
    for (int channel = 0; channel < 2; ++channel) {
        m_bars[channel].ballistics.advance(peaks[channel], elapsed);
        refresh(channel, ratio);
    }
}

// What has changed of the bar is drawn anew, and nothing else.
void LevelMeter::refresh(int channel, double ratio)
{
    Bar &bar = m_bars[channel];
    const QRectF track = barRectangle(channel);
    const double lit = qRound(bar.ballistics.position() * width() * ratio) / ratio;
    const auto [least, most] = std::minmax({lit, std::exchange(bar.lit, lit)});
    if (least != most) {
        const double left = least - track.height() / 2; // with the round end of the shorter one
        drawAnew(QRectF(left, track.top(), most - left, track.height()));
    }
    const bool clips = bar.ballistics.isClipping();
    if (std::exchange(bar.clips, clips) != clips)
        drawAnew(clipMark(track));
}

// With the pixels around it: at odd scale factors an edge lies within one.
void LevelMeter::drawAnew(const QRectF &part)
{
    update(part.toAlignedRect().adjusted(-1, -1, 1, 1));
}

QRectF LevelMeter::barRectangle(int channel) const
{
    const double scale = height() / (2 * barHeight + barGap);
    return {0, channel * (barHeight + barGap) * scale, double(width()), barHeight * scale};
}

void LevelMeter::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    CardWindow::paintGround(painter, this, event->rect());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QBrush light = gradient(width());
    for (int channel = 0; channel < 2; ++channel) {
        const QRectF track = barRectangle(channel);
        if (event->region().intersects(track.toAlignedRect()))
            paintBar(painter, track, m_bars[channel], light);
    }
}

// The round ends belong to the track: a bar shorter than they are is clipped by them.
void LevelMeter::paintBar(QPainter &painter, const QRectF &track, const Bar &bar, const QBrush &light) const
{
    const double radius = track.height() / 2;
    painter.setBrush(trackColour);
    painter.drawRoundedRect(track, radius, radius);
    if (bar.lit > 0) {
        painter.setBrush(light);
        const bool isShort = bar.lit < 2 * radius;
        if (isShort)
            painter.setClipRect(QRectF(track.topLeft(), QSizeF(bar.lit, track.height())));
        painter.drawRoundedRect(
            QRectF(track.topLeft(), QSizeF(std::max(bar.lit, 2 * radius), track.height())), radius, radius);
        if (isShort)
            painter.setClipping(false);
    }
    if (bar.clips) {
        painter.setBrush(CardStyle::colours().recordMark);
        painter.drawRoundedRect(clipMark(track), radius, radius);
    }
}
