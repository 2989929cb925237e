// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/Stage.h"
#include "platform/ThreadCheck.h"
#include "platform/desktop/Compositor.h"
#include "platform/desktop/WindowMargins.h"
#include "ui/flip/NSWindow_Flipr.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWindow>

namespace {

constexpr Qt::WindowFlags stageFlags = Qt::Window | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint
    | Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint;

// Within its corners a card covers its shadow.
constexpr int cornerReach = 48;

// Whole pixels of the screen at quarter scale factors, so that the card at rest lies on the pixels that its
// picture lies on.
QMargins shadowMargins()
{
    const QRect reach = FlipShadow::reach(QRectF(0, 0, 0, 0)).toAlignedRect();
    return {-reach.left(), -reach.top(), reach.right() + 1, reach.bottom() + 1};
}

// The first control that the keyboard would reach by itself.
QWidget *firstControl(QWidget *card)
{
    for (QWidget *next = card->nextInFocusChain(); next != card; next = next->nextInFocusChain()) {
        if (card->isAncestorOf(next) && next->isEnabled() && next->focusPolicy() & Qt::TabFocus)
            return next;
    }
    return card;
}

} // namespace

// Opaque for the toolkit, so that nothing below it is drawn, and transparent for the screen.
class Curtain : public QWidget {
public:
    explicit Curtain(QWidget *stage)
        : QWidget(stage)
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(rect(), Qt::transparent);
    }
};

Stage::Stage(QWidget *parent)
    : QWidget(parent, stageFlags)
    , m_curtain(new Curtain(this))
{
    setAttribute(Qt::WA_TranslucentBackground);
    connect(&platform::CompositorWatch::shared(), &platform::CompositorWatch::changed, this, &Stage::fit);
}

// The flipping window may be a part of this one's surface, and would be left with a surface that is gone.
Stage::~Stage()
{
    NSWindow_Flipr::releaseFlippingWindow();
}

Stage *Stage::of(const QWidget *card)
{
    return card ? qobject_cast<Stage *>(card->parentWidget()) : nullptr;
}

void Stage::addCard(QWidget *card)
{
    platform::assertMainThread();
    if (of(card) == this)
        return;
    m_controls[card] = card->focusWidget();
    card->setParent(this);
    card->installEventFilter(this);
    if (!m_card)
        setCard(card);
}

void Stage::setCard(QWidget *card)
{
    addCard(card);
    const QPointer<QWidget> before = std::exchange(m_card, card);
    fit();
    card->move(cardRect().topLeft());
    card->show();
    setWindowTitle(card->windowTitle());
    // Before the other card is hidden, which would give the keyboard to whatever comes next.
    QWidget *control = card->focusWidget() ? card->focusWidget() : m_controls.take(card).data();
    (control ? control : firstControl(card))->setFocus(Qt::ActiveWindowFocusReason);
    if (before && before != card)
        before->hide();
    m_curtain->raise();
}

void Stage::prepareCard(QWidget *card)
{
    addCard(card);
    if (card == m_card)
        return;
    card->move(rect().bottomRight() + QPoint(1, 1));
    card->show();
    setWindowTitle(card->windowTitle());
}

QRect Stage::cardRect() const
{
    return {QPoint(m_margins.left(), m_margins.top()), m_card ? m_card->size() : QSize()};
}

void Stage::setCurtainDrawn(bool drawn)
{
    m_curtain->clearMask();
    m_curtain->setVisible(drawn);
}

void Stage::openCurtain()
{
    m_curtain->setMask(QRegion(rect()).subtracted(solidPart()));
    repaint(solidPart());
}

// What the curtain covers counts as drawn for the toolkit, so the stage's own repaint would leave the shadow.
void Stage::drawNow()
{
    m_curtain->isVisible() ? m_curtain->repaint() : repaint();
}

bool Stage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_card && event->type() == QEvent::WindowTitleChange)
        setWindowTitle(m_card->windowTitle());
    if (watched == m_card && event->type() == QEvent::Resize)
        fit();
    // Some window managers hear only of what changes once they know the window.
    if (watched == windowHandle() && event->type() == QEvent::Expose && std::exchange(m_isNew, false))
        platform::setWindowMargins(this, m_margins);
    return QWidget::eventFilter(watched, event);
}

// The card stays where it is.
void Stage::fit()
{
    if (!m_card)
        return;
    const QPoint corner = geometry().topLeft() + cardRect().topLeft();
    const QMargins before = m_margins;
    m_margins = platform::compositorRuns() ? shadowMargins() : QMargins();
    const QSize size = cardRect().marginsAdded(m_margins).size();
    const QPoint place = corner - cardRect().topLeft();
    const bool isOther = size != this->size() || m_margins != before;
    if (size != this->size()) {
        // In one step: a window manager that sees a size and then a place may find a place of its own
        // between.
        setMinimumSize(size.boundedTo(minimumSize()));
        setMaximumSize(size.expandedTo(maximumSize()));
        testAttribute(Qt::WA_Moved) || isVisible() ? setGeometry(QRect(place, size)) : resize(size);
        setFixedSize(size);
    }
    m_card->move(cardRect().topLeft());
    m_curtain->setGeometry(rect());
    m_shadowSize = QSize();
    // Compositors draw the whole window anew when they are told, also of the same margins.
    if (isOther && testAttribute(Qt::WA_WState_Created))
        platform::setWindowMargins(this, m_margins);
    update();
}

void Stage::showEvent(QShowEvent *)
{
    fit();
    platform::setWindowMargins(this, m_margins);
    windowHandle()->installEventFilter(this);
    m_isNew = true;
}

QRegion Stage::solidPart() const
{
    const QRect card = cardRect();
    return QRegion(card.adjusted(cornerReach, 1, -cornerReach, -1))
        + card.adjusted(1, cornerReach, -1, -cornerReach);
}

void Stage::prepareShadow()
{
    const double ratio = devicePixelRatioF();
    if (m_shadowSize == m_card->size() && m_shadowRatio == ratio)
        return;
    m_shadowSize = m_card->size();
    m_shadowRatio = ratio;
    const QRectF card(QPointF(cardRect().topLeft()) * ratio, QSizeF(cardRect().size()) * ratio);
    m_shadow.begin(FlipOutline(m_card, ratio), QTransform::fromTranslate(card.x(), card.y()), card, ratio);
}

void Stage::drawShadow(QPainter &painter, const QRect &part)
{
    const QTransform toPixels = QTransform::fromScale(m_shadowRatio, m_shadowRatio);
    const QRect pixels = toPixels.mapRect(QRectF(part)).toAlignedRect();
    QImage image(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y)
        m_shadow.writePixels(
            reinterpret_cast<QRgb *>(image.scanLine(y)), pixels.x(), pixels.y() + y, image.width());
    painter.drawImage(pixels.topLeft(), image);
}

void Stage::paintEvent(QPaintEvent *event)
{
    if (!m_card || m_margins.isNull())
        return;
    prepareShadow();
    QPainter painter(this);
    painter.scale(1 / m_shadowRatio, 1 / m_shadowRatio);
    // At odd scale factors parts share a row of pixels.
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const QRect &part : event->region().subtracted(solidPart()))
        drawShadow(painter, part);
}
