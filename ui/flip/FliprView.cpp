// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FliprView.h"
#include "platform/Logging.h"
#include "ui/flip/FlipGeometry.h"
#include "ui/flip/InputBlock.h"
#include "ui/flip/WindowExchange.h"

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

constexpr auto fadeInTime = 50ms;
constexpr auto fadeOutTime = 100ms;
// From the first frame drawn to the frame seen: compositors need up to three frames to bring up a new window.
constexpr auto coverTime = 80ms;
static_assert(coverTime > fadeInTime);
// A flipping window that is never drawn must not keep the user waiting.
constexpr auto coverDeadline = 500ms;
// What compositors need to show a window whose opacity has changed.
constexpr auto opacityTime = 30ms;
// The same on a busy machine, where nothing is lost by waiting.
constexpr auto longOpacityTime = 120ms;

} // namespace

FliprView::FliprView(const QRect &frame, const QRectF &originalRect, QWidget *parent)
    : QWidget(parent)
    , m_originalRect(originalRect)
    , m_uncutSize(frame.size())
{
    setGeometry(frame);
    setAttribute(Qt::WA_NoSystemBackground);
    m_stageTimer.setSingleShot(true);
    m_stageTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_stageTimer, &QTimer::timeout, this, &FliprView::stageEnded);
    m_fade.setPropertyName("windowOpacity");
}

FliprView::~FliprView()
{
    for (QWidget *window : {m_initialWindow.data(), m_finalWindow.data()}) {
        if (window)
            window->setWindowOpacity(1);
    }
}

void FliprView::setInitialWindow(QWidget *initialWindow, QWidget *finalWindow, bool forward)
{
    if (!initialWindow || !finalWindow || isFlipping())
        return;
    vanish();
    const bool slow = QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
    m_totalDuration = slow ? slowFlipSeconds : flipSeconds;
    m_inputBlock = std::make_unique<InputBlock>();
    m_initialWindow = initialWindow;
    m_finalWindow = finalWindow;
    m_direction = forward ? 1.0F : -1.0F;
    m_topLeft = initialWindow->frameGeometry().topLeft();
    connect(finalWindow, &QObject::destroyed, this, &FliprView::windowDestroyed);

    const QScreen *screen = initialWindow->screen();
    const QRectF frame = placeOver(initialWindow->frameGeometry(), screen);
    if (frame.isEmpty()) {
        exchangeAtOnce();
        return;
    }
    window()->setGeometry(frame.toRect());
    m_picture = FlipPicture(initialWindow, screen->devicePixelRatio());
    bringInUnseen(finalWindow);
    m_finalImage = FlipPicture(finalWindow, screen->devicePixelRatio());

    m_animation = std::make_unique<FliprAnimation>(FliprAnimation::EaseInEaseOut);
    m_animation->setDelegate(this);
    m_animation->setFrameRate(screen->refreshRate());
    m_animation->setCurrentProgress(0);
    m_statistics = {};
    m_covered = false;
    m_drawn = rect();
    enter(Stage::Covering, coverDeadline);
    window()->setWindowOpacity(0);
    window()->show();
    window()->raise();
}

QRectF FliprView::placeOver(const QRect &initialFrame, const QScreen *screen)
{
    const QRect primary = QGuiApplication::primaryScreen()->geometry();
    const double height = primary.y() + primary.height();
    const QRectF initial = FlipGeometry::turnedOver(QRectF(initialFrame), height);
    const QRectF frame = FlipGeometry::flippingFrame(initial, m_originalRect, m_uncutSize);
    m_uncutSize = frame.size();
    m_originalRect.setSize(initial.size());
    const QSizeF visible = screen->availableGeometry().size();
    return FlipGeometry::turnedOver(FlipGeometry::clippedToSize(frame, visible), height);
}

// Front and active, but not yet visible.
void FliprView::bringInUnseen(QWidget *window)
{
    window->setWindowOpacity(0);
    WindowExchange::bringToFront(window);
}

// Some window managers move a window when it appears.
void FliprView::keepFinalWindowInPlace()
{
    if (m_finalWindow && m_finalWindow->frameGeometry().topLeft() != m_topLeft)
        m_finalWindow->move(m_topLeft);
}

void FliprView::enter(Stage stage, std::chrono::milliseconds deadline)
{
    m_stage = stage;
    m_stageTimer.start(deadline);
}

void FliprView::stageEnded()
{
    switch (m_stage) {
    case Stage::Covering:
        m_covered ? turn() : bringIn();
        break;
    case Stage::Turning:
        if (m_initialWindow)
            m_initialWindow->hide();
        break;
    case Stage::Uncovering:
        endFlip();
        m_stage = Stage::Fading;
        fadeTo(0, fadeOutTime);
        m_stageTimer.start(fadeOutTime);
        break;
    case Stage::Fading:
        vanish();
        break;
    case Stage::Idle:
        break;
    }
}

void FliprView::turn()
{
    m_fade.stop();
    window()->setWindowOpacity(1);
    // Before it is hidden: a window manager's frame around it is seen a moment longer, empty and black.
    if (m_initialWindow)
        m_initialWindow->setWindowOpacity(0);
    enter(Stage::Turning, longOpacityTime);
    keepFinalWindowInPlace();

    const float firstFrameTime = m_frameTime;
    m_animation->setCurrentProgress(measuredProgress);
    display();
    const auto timing = FlipGeometry::timing(m_totalDuration, firstFrameTime, m_frameTime);
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
    const float value = m_animation ? m_animation->currentValue() : m_lastValue;
    m_lastValue = value;
    if (FlipGeometry::showsBack(value) && !m_finalImage.isNull())
        m_picture = std::exchange(m_finalImage, FlipPicture());
    drawPicture(quadrilateral(value));
    m_frameTime = static_cast<float>(clock.nsecsElapsed() / 1e9);
    ++m_statistics.frames;
    m_statistics.longestFrameTime = std::max(m_statistics.longestFrameTime, m_frameTime);
}

// In pixels of the screen, so that a picture that lies flat is copied as it is.
void FliprView::drawPicture(const QPolygonF &corners)
{
    const double ratio = devicePixelRatioF();
    const QTransform toPixels = QTransform::fromScale(ratio, ratio);
    m_drawn = FlipFrame::reach(corners) & rect();
    const QRect area = toPixels.mapRect(QRectF(m_drawn)).toAlignedRect();
    QPainter painter(this);
    painter.scale(1 / ratio, 1 / ratio);
    painter.drawImage(area.topLeft(), m_frame.composed(m_picture, toPixels.map(corners), area, ratio),
        QRect({0, 0}, area.size()));
}

void FliprView::display()
{
    repaint(FlipFrame::reach(quadrilateral(m_animation->currentValue())) | m_drawn);
}

void FliprView::paintEvent(QPaintEvent *event)
{
    drawRect(event->rect());
    if (m_stage == Stage::Covering && !m_covered) {
        m_covered = true;
        fadeTo(1, fadeInTime);
        m_stageTimer.start(coverTime);
    }
}

void FliprView::animationDidEnd(FliprAnimation *)
{
    m_statistics.seconds = m_turnTime.elapsed() / 1e3;
    m_statistics.droppedFrames = m_animation->droppedFrames();
    qCDebug(lcUi, "Flip: %d frames in %.3f s, %d dropped, the longest took %.1f ms", m_statistics.frames,
        m_statistics.seconds, m_statistics.droppedFrames, double(m_statistics.longestFrameTime) * 1e3);
    bringIn();
}

void FliprView::bringIn()
{
    if (m_initialWindow)
        m_initialWindow->hide();
    if (m_finalWindow) {
        keepFinalWindowInPlace();
        m_finalWindow->setWindowOpacity(1);
        m_finalWindow->repaint();
        m_finalWindow->raise();
        m_finalWindow->activateWindow();
    }
    enter(Stage::Uncovering, opacityTime);
}

void FliprView::exchangeAtOnce()
{
    WindowExchange::exchange(m_initialWindow, m_finalWindow);
    endFlip();
}

void FliprView::windowDestroyed()
{
    // Nothing is left to bring in; a user must not be left without a window.
    if (m_initialWindow) {
        m_initialWindow->setWindowOpacity(1);
        m_initialWindow->show();
    }
    endFlip();
    vanish();
}

void FliprView::endFlip()
{
    m_stage = Stage::Idle;
    m_stageTimer.stop();
    if (m_finalWindow)
        disconnect(m_finalWindow, nullptr, this, nullptr);
    if (m_animation) {
        // The animation may be what called this.
        m_animation->stopAnimation();
        m_animation.release()->deleteLater();
    }
    if (m_initialWindow)
        m_initialWindow->setWindowOpacity(1);
    m_initialWindow = nullptr;
    m_finalWindow = nullptr;
    m_finalImage = FlipPicture();
    m_inputBlock.reset();
    Q_EMIT flipEnded();
}

void FliprView::fadeTo(double opacity, std::chrono::milliseconds time)
{
    m_fade.stop();
    m_fade.setTargetObject(window());
    m_fade.setStartValue(window()->windowOpacity());
    m_fade.setEndValue(opacity);
    m_fade.setDuration(static_cast<int>(time.count()));
    m_fade.start();
}

void FliprView::vanish()
{
    m_stage = Stage::Idle;
    m_stageTimer.stop();
    m_fade.stop();
    window()->hide();
    // Between flips, nothing the size of a picture is kept.
    m_picture = FlipPicture();
    m_frame = FlipFrame();
}
