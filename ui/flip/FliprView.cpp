// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FliprView.h"
#include "platform/Logging.h"
#include "platform/desktop/Foreground.h"
#include "platform/desktop/Overlay.h"
#include "platform/desktop/ScreenUpdates.h"
#include "ui/flip/FlipGeometry.h"
#include "ui/flip/InputBlock.h"
#include "ui/flip/Stage.h"

#include <QGuiApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr double flipSeconds = 0.75;
// With the Shift key held.
constexpr double slowFlipSeconds = 3.75;
// Drawn once before the clock starts, to measure what a frame costs.
constexpr float measuredProgress = 0.05F;

// From the flipping window's first paint to the screen where the screen does not tell: compositors need up to
// three frames to bring up a window.
constexpr auto coverTime = 80ms;
// A flipping window that is never drawn must not keep the user waiting, and one that fades in not for ever.
constexpr auto coverDeadline = 500ms;
constexpr auto lookInterval = 8ms;
constexpr auto quietTime = 24ms;
// Where the mark is on the card: so many pixels below the middle of its upper edge.
constexpr int markDepth = 6;
// The card at rest, in the flipping window: two frames of a usual screen.
constexpr auto restTime = 34ms;
// What compositors need to show what was drawn last.
constexpr auto leaveTime = 60ms;

QPoint markOn(const Stage &stage)
{
    const QRectF card = stage.cardRect();
    return (QPointF(card.center().x(), card.top()) * stage.devicePixelRatioF()).toPoint()
        + QPoint(0, markDepth);
}

} // namespace

FliprView::FliprView(const QRect &frame, const QRectF &originalRect, QWidget *parent)
    : QWidget(parent)
    , m_originalRect(originalRect)
    , m_uncutSize(frame.size())
{
    setGeometry(frame);
    setAttribute(Qt::WA_NoSystemBackground);
    m_phaseTimer.setSingleShot(true);
    m_phaseTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_phaseTimer, &QTimer::timeout, this, &FliprView::phaseEnded);
}

FliprView::~FliprView()
{
    if (m_stage)
        m_stage->setCurtainDrawn(false);
}

void FliprView::setInitialWindow(QWidget *initialWindow, QWidget *finalWindow, bool forward)
{
    Stage *stage = Stage::of(initialWindow);
    if (!stage || !finalWindow || isFlipping())
        return;
    vanish();
    m_slow = QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
    m_inputBlock = std::make_unique<InputBlock>();
    m_stage = stage;
    m_initialWindow = initialWindow;
    m_finalWindow = finalWindow;
    m_direction = forward ? 1.0F : -1.0F;
    connect(finalWindow, &QObject::destroyed, this, &FliprView::windowDestroyed);

    const QRectF frame = placeOver(platform::overlayFrame(stage, stage->cardRect()));
    if (frame.isEmpty()) {
        stage->setCard(finalWindow);
        platform::bringToFront(stage);
        forget();
        return;
    }
    // What it asks the disk and the sound server is answered while the flipping window comes up.
    stage->prepareCard(finalWindow);
    platform::bringToFront(stage);
    m_animation = std::make_unique<FliprAnimation>(FliprAnimation::EaseInEaseOut);
    m_animation->setDelegate(this);
    m_animation->setFrameRate(stage->screen()->refreshRate());
    m_animation->setCurrentProgress(0);
    m_statistics = {};
    m_mark.emplace(stage, markOn(*stage));
    m_coverTime.invalidate();
    enter(Phase::Covering, coverDeadline);
    platform::prepareOverlay(window(), stage);
    window()->setGeometry(frame.toRect());
    window()->show();
    window()->raise();
}

QRectF FliprView::placeOver(const QRectF &initialFrame)
{
    const QRect desktop = QGuiApplication::primaryScreen()->virtualGeometry();
    const QRectF initial
        = FlipGeometry::turnedOver(initialFrame.translated(-desktop.topLeft()), desktop.height());
    QRectF frame = FlipGeometry::flippingFrame(initial, m_originalRect, m_uncutSize);
    m_uncutSize = frame.size();
    m_originalRect.setSize(initial.size());
    if (!platform::overlaysAreRelative())
        frame = FlipGeometry::clippedToSize(frame, desktop.size());
    return FlipGeometry::turnedOver(frame, desktop.height()).translated(desktop.topLeft());
}

void FliprView::enter(Phase phase, std::chrono::milliseconds time)
{
    constexpr int slowness = slowFlipSeconds / flipSeconds;
    const bool isSeen = phase == Phase::Beginning || phase == Phase::Ending;
    m_phase = phase;
    m_phaseTimer.start(m_slow && isSeen ? slowness * time : time);
}

void FliprView::phaseEnded()
{
    switch (m_phase) {
    case Phase::Covering:
        waitForMark();
        break;
    case Phase::Beginning:
        turn();
        break;
    case Phase::Ending:
        end();
        break;
    case Phase::Leaving:
        vanish();
        break;
    case Phase::Turning:
    case Phase::Idle:
        break;
    }
}

void FliprView::waitForMark()
{
    const bool isDrawn = m_coverTime.isValid();
    if (isDrawn && m_mark && m_mark->colour() && !m_coverTime.hasExpired(coverDeadline.count())) {
        if (m_mark->isThere())
            m_mark.reset();
        // A compositor that is still drawing could show the half of an exchange.
        m_phaseTimer.start(m_mark ? lookInterval : quietTime);
    } else {
        begin();
    }
}

// In pixels of the screen, counted from the corner of this view.
QPoint FliprView::cardCorner() const
{
    const double ratio = devicePixelRatioF();
    const QPointF byPoints = QPointF(m_originalRect.x(), height() - m_originalRect.bottom()) * ratio;
    const QPoint onStage = (QPointF(m_stage->cardRect().topLeft()) * ratio).toPoint();
    return platform::cornerInOverlay(window(), m_stage, byPoints.toPoint() - onStage) + onStage;
}

// The cards are exchanged behind the curtain. Both pictures are taken now, and not when the flip was asked
// for, so that they are what is seen at its two ends.
void FliprView::begin()
{
    if (!m_stage || !m_finalWindow)
        return;
    const double ratio = m_stage->devicePixelRatioF();
    if (m_initialWindow)
        m_picture = FlipPicture(m_initialWindow, ratio);
    m_stage->setCurtainDrawn(true);
    m_stage->setCard(m_finalWindow);
    m_finalImage = FlipPicture(m_finalWindow, ratio);
    if (m_picture.isNull())
        m_picture = m_finalImage;
    m_shift = QPointF();
    m_shift = cardCorner() - pixels(quadrilateral(0)).first();
    m_phase = Phase::Beginning;
    m_drawn = rect();
    {
        const platform::ScreenUpdatesDisabled together;
        repaint();
        m_stage->repaint();
    }
    qCDebug(lcUi, "Flip begins");
    enter(Phase::Beginning, restTime);
}

void FliprView::turn()
{
    qCDebug(lcUi, "Flip turns");
    m_phase = Phase::Turning;
    const float firstFrameTime = m_frameTime;
    m_animation->setCurrentProgress(measuredProgress);
    display();
    const auto timing
        = FlipGeometry::timing(m_slow ? slowFlipSeconds : flipSeconds, firstFrameTime, m_frameTime);
    m_turnTime.start();
    m_animation->startAtProgress(timing.startProgress, timing.duration);
}

QPolygonF FliprView::quadrilateral(float value) const
{
    const auto corners = FlipGeometry::corners(value, m_direction, m_originalRect.size());
    QPolygonF result{corners.topLeft, corners.topRight, corners.bottomRight, corners.bottomLeft};
    for (QPointF &corner : result)
        corner = FlipGeometry::turnedOver(m_originalRect.topLeft() + corner, height());
    return result;
}

void FliprView::drawRect(const QRect &)
{
    if (m_picture.isNull())
        return;
    QElapsedTimer clock;
    clock.start();
    const float value = m_animation->currentValue();
    if (FlipGeometry::showsBack(value) && !m_finalImage.isNull())
        m_picture = std::exchange(m_finalImage, FlipPicture());
    drawPicture(quadrilateral(value));
    m_frameTime = static_cast<float>(clock.nsecsElapsed() / 1e9);
    ++m_statistics.frames;
    m_statistics.longestFrameTime = std::max(m_statistics.longestFrameTime, m_frameTime);
}

QPolygonF FliprView::pixels(const QPolygonF &corners) const
{
    const double ratio = devicePixelRatioF();
    return QTransform::fromScale(ratio, ratio).map(corners).translated(m_shift);
}

// In pixels of the screen, so that a picture that lies flat is copied as it is.
void FliprView::drawPicture(const QPolygonF &corners)
{
    const double ratio = devicePixelRatioF();
    m_drawn = FlipFrame::reach(corners) & rect();
    const QRect area = QTransform::fromScale(ratio, ratio).mapRect(QRectF(m_drawn)).toAlignedRect();
    QPainter painter(this);
    painter.scale(1 / ratio, 1 / ratio);
    painter.drawImage(area.topLeft(), m_frame.composed(m_picture, pixels(corners), area, ratio),
        QRect({0, 0}, area.size()));
}

void FliprView::display()
{
    repaint(FlipFrame::reach(quadrilateral(m_animation->currentValue())) | m_drawn);
}

void FliprView::paintEvent(QPaintEvent *event)
{
    drawRect(event->rect());
    if (m_phase == Phase::Covering)
        drawMark();
}

void FliprView::drawMark()
{
    if (m_mark && m_mark->colour()) {
        QPainter painter(this);
        painter.scale(1 / devicePixelRatioF(), 1 / devicePixelRatioF());
        const QPoint onCard
            = markOn(*m_stage) - (QPointF(m_stage->cardRect().topLeft()) * devicePixelRatioF()).toPoint();
        painter.fillRect(QRect(cardCorner() + onCard, QSize(1, 1)), *m_mark->colour());
    }
    if (m_coverTime.isValid())
        return;
    m_coverTime.start();
    m_phaseTimer.start(m_mark && m_mark->colour() ? lookInterval : coverTime);
    // The picture reaches the window system at the end of this event.
    QTimer::singleShot(0, this, [this] { platform::revealOverlay(window()); });
}

void FliprView::animationDidEnd(FliprAnimation *)
{
    m_statistics.seconds = m_turnTime.elapsed() / 1e3;
    m_statistics.droppedFrames = m_animation->droppedFrames();
    qCDebug(lcUi, "Flip: %d frames in %.3f s, %d dropped, the longest took %.1f ms", m_statistics.frames,
        m_statistics.seconds, m_statistics.droppedFrames, double(m_statistics.longestFrameTime) * 1e3);
    display();
    qCDebug(lcUi, "Flip rests");
    enter(Phase::Ending, restTime);
}

void FliprView::end()
{
    m_picture = FlipPicture();
    {
        const platform::ScreenUpdatesDisabled together;
        if (m_stage) {
            m_stage->setCurtainDrawn(false);
            m_stage->repaint();
        }
        repaint();
    }
    qCDebug(lcUi, "Flip ends");
    forget();
    enter(Phase::Leaving, leaveTime);
    Q_EMIT flipEnded();
}

void FliprView::windowDestroyed()
{
    // Nothing is left to bring in; a user must not be left without a window.
    if (m_stage && m_initialWindow)
        m_stage->setCard(m_initialWindow);
    end();
    vanish();
}

void FliprView::forget()
{
    m_phase = Phase::Idle;
    m_phaseTimer.stop();
    if (m_finalWindow)
        disconnect(m_finalWindow, nullptr, this, nullptr);
    if (m_animation) {
        // The animation may be what called this.
        m_animation->stopAnimation();
        m_animation.release()->deleteLater();
    }
    m_stage = nullptr;
    m_initialWindow = nullptr;
    m_finalWindow = nullptr;
    m_finalImage = FlipPicture();
    m_inputBlock.reset();
}

void FliprView::vanish()
{
    m_phase = Phase::Idle;
    m_phaseTimer.stop();
    window()->hide();
    // Between flips, nothing the size of a picture is kept.
    m_picture = FlipPicture();
    m_frame = FlipFrame();
}
