// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FlipCover.h"

#include "platform/desktop/Overlay.h"
#include "ui/flip/Stage.h"

#include <QPainter>

using namespace std::chrono_literals;

namespace {

// From the flipping window's first paint to the screen where the screen does not tell: compositors need up to
// three frames to bring up a window.
constexpr auto coverTime = 80ms;
// A flipping window that is never drawn must not keep the user waiting, and one that fades in not for ever.
constexpr auto coverDeadline = 500ms;
constexpr auto lookInterval = 8ms;
constexpr auto quietTime = 24ms;
// Where the mark is on the card: this many pixels below the middle of its upper edge.
constexpr int markDepth = 6;

} // namespace

FlipCover::FlipCover(QWidget *view)
    : m_view(view)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &FlipCover::look);
}

void FlipCover::comeUp(const Stage &stage, const QRect &frame)
{
    const QRectF card = stage.cardRect();
    const double ratio = stage.devicePixelRatioF();
    const QPoint markOnStage
        = (QPointF(card.center().x(), card.top()) * ratio).toPoint() + QPoint(0, markDepth);
    m_markOnCard = markOnStage - (card.topLeft() * ratio).toPoint();
    m_mark.emplace(&stage, markOnStage);
    m_sinceFirstPaint.invalidate();
    m_timer.start(coverDeadline);
    QWidget *window = m_view->window();
    platform::prepareOverlay(window, &stage);
    window->setGeometry(frame);
    window->show();
    window->raise();
}

void FlipCover::draw(QPoint cardCorner)
{
    if (!m_timer.isActive())
        return;
    if (m_mark && m_mark->colour()) {
        QPainter painter(m_view);
        painter.scale(1 / m_view->devicePixelRatioF(), 1 / m_view->devicePixelRatioF());
        painter.fillRect(QRect(cardCorner + m_markOnCard, QSize(1, 1)), *m_mark->colour());
    }
    if (m_sinceFirstPaint.isValid())
        return;
    m_sinceFirstPaint.start();
    m_timer.start(m_mark && m_mark->colour() ? lookInterval : coverTime);
    // The picture reaches the window system at the end of this event.
    QTimer::singleShot(0, this, [this] { platform::revealOverlay(m_view->window()); });
}

void FlipCover::giveUp()
{
    m_timer.stop();
    m_mark.reset();
}

void FlipCover::look()
{
    const bool isDrawn = m_sinceFirstPaint.isValid();
    if (!isDrawn || !m_mark || !m_mark->colour() || m_sinceFirstPaint.hasExpired(coverDeadline.count())) {
        giveUp();
        Q_EMIT isThere();
        return;
    }
    if (m_mark->isThere())
        m_mark.reset();
    // A compositor that is still drawing could show the half of an exchange.
    m_timer.start(m_mark ? lookInterval : quietTime);
}
