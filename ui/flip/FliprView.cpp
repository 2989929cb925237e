// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FliprView.h"
#include "platform/Logging.h"
#include "platform/desktop/Compositor.h"
#include "platform/desktop/Foreground.h"
#include "platform/desktop/Overlay.h"
#include "platform/desktop/ScreenUpdates.h"
#include "ui/flip/FlipGeometry.h"
#include "ui/flip/InputBlock.h"
#include "ui/flip/Stage.h"

#include <QGuiApplication>
#include <QPaintEvent>
#include <QScreen>
#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr double flipSeconds = 0.75;
// With the Shift key held.
constexpr double slowFlipSeconds = 3.75;
// Drawn once before the clock starts, to measure what a frame costs.
constexpr float measuredProgress = 0.05F;

// The card at rest, in the flipping window: two frames of a usual screen.
constexpr auto restTime = 34ms;
// What compositors need to show what was drawn last.
constexpr auto leaveTime = 60ms;

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
    connect(&m_cover, &FlipCover::isThere, this, &FliprView::begin);
    connect(&platform::CompositorWatch::shared(), &platform::CompositorWatch::changed, this,
        &FliprView::compositorChanged);
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
    m_phase = Phase::Covering;
    m_cover.comeUp(*stage, frame.toRect());
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
    case Phase::Beginning:
        turn();
        break;
    case Phase::Ending:
        end();
        break;
    case Phase::Leaving:
        vanish();
        break;
    case Phase::Idle:
    case Phase::Covering:
    case Phase::Turning:
        break;
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
    const FlipPicture front = m_initialWindow ? FlipPicture(m_initialWindow, ratio) : FlipPicture();
    m_stage->setCurtainDrawn(true);
    m_stage->setCard(m_finalWindow);
    m_card.emplace(*this, m_originalRect, m_direction, front, FlipPicture(m_finalWindow, ratio));
    m_card->layOn(cardCorner());
    {
        const platform::ScreenUpdatesDisabled together;
        repaint();
        m_stage->drawNow();
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

void FliprView::drawRect(const QRect &)
{
    if (!m_card)
        return;
    QElapsedTimer clock;
    clock.start();
    m_card->draw(*this, m_animation->currentValue());
    m_frameTime = static_cast<float>(clock.nsecsElapsed() / 1e9);
    ++m_statistics.frames;
    m_statistics.longestFrameTime = std::max(m_statistics.longestFrameTime, m_frameTime);
}

void FliprView::display()
{
    if (m_card)
        repaint(m_card->change(m_animation->currentValue()));
}

void FliprView::paintEvent(QPaintEvent *event)
{
    drawRect(event->rect());
    if (m_phase == Phase::Covering)
        m_cover.draw(cardCorner());
}

void FliprView::animationDidEnd(FliprAnimation *)
{
    m_statistics.seconds = m_turnTime.elapsed() / 1e3;
    m_statistics.droppedFrames = m_animation->droppedFrames();
    qCDebug(lcUi, "Flip: %d frames in %.3f s, %d dropped, the longest took %.1f ms", m_statistics.frames,
        m_statistics.seconds, m_statistics.droppedFrames, double(m_statistics.longestFrameTime) * 1e3);
    display();
    // A compositor that is in the middle of a picture when the two are exchanged shows neither; with the card
    // below it, only its shadow is not there for that moment.
    if (m_stage)
        m_stage->openCurtain();
    qCDebug(lcUi, "Flip rests");
    enter(Phase::Ending, restTime);
}

void FliprView::end()
{
    m_card.reset();
    {
        const platform::ScreenUpdatesDisabled together;
        if (m_stage) {
            m_stage->setCurtainDrawn(false);
            m_stage->drawNow();
        }
        repaint();
    }
    qCDebug(lcUi, "Flip ends");
    forget();
    enter(Phase::Leaving, leaveTime);
    Q_EMIT flipEnded();
}

void FliprView::breakOff(QWidget *cardToShow)
{
    if (m_stage && cardToShow)
        m_stage->setCard(cardToShow);
    end();
    vanish();
}

// Nothing is left to bring in; a user must not be left without a window.
void FliprView::windowDestroyed()
{
    breakOff(m_initialWindow);
}

void FliprView::compositorChanged()
{
    if (m_phase != Phase::Idle && !platform::compositorRuns())
        breakOff(m_finalWindow);
}

void FliprView::forget()
{
    m_phase = Phase::Idle;
    m_phaseTimer.stop();
    m_cover.giveUp();
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
    m_inputBlock.reset();
}

void FliprView::vanish()
{
    m_phase = Phase::Idle;
    m_phaseTimer.stop();
    window()->hide();
    // Between flips, nothing the size of a picture is kept.
    m_card.reset();
}
