// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/Stage.h"
#include "platform/ThreadCheck.h"

#include <QEvent>
#include <QPainter>

namespace {

constexpr Qt::WindowFlags stageFlags = Qt::Window | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint
    | Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint;

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
}

Stage::~Stage() = default;

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

void Stage::bringToFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void Stage::prepareCard(QWidget *card)
{
    addCard(card);
    if (card == m_card)
        return;
    card->move(rect().bottomRight() + QPoint(1, 1));
    card->show();
}

QRect Stage::cardRect() const
{
    return {QPoint(0, 0), m_card ? m_card->size() : QSize()};
}

void Stage::setCurtainDrawn(bool drawn)
{
    m_curtain->setVisible(drawn);
}

bool Stage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_card && event->type() == QEvent::WindowTitleChange)
        setWindowTitle(m_card->windowTitle());
    if (watched == m_card && event->type() == QEvent::Resize)
        fit();
    return QWidget::eventFilter(watched, event);
}

void Stage::fit()
{
    if (!m_card)
        return;
    setFixedSize(cardRect().size());
    m_curtain->setGeometry(rect());
}
