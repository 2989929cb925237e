// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/FocusRing.h"
#include "ui/CardStyle.h"
#include "ui/IconButton.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPainter>
#include <QWindow>
#include <algorithm>
#include <utility>

namespace {

// Between the control and the ring.
constexpr int ringGap = 2;
constexpr int controlRadius = 7;

// For all windows: a card that is brought up with a key shows where the keyboard is.
bool lastInputWasKey = false;

int reach()
{
    return CardStyle::scaled(ringGap + CardStyle::focusRingWidth);
}

} // namespace

FocusRing::FocusRing(QWidget *card)
    : QWidget(card)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { followFocus(now); });
    card->installEventFilter(this);
}

void FocusRing::followFocus(QWidget *focused)
{
    leaveControl();
    // The focus may rest on the card itself, which no ring could surround.
    const bool isControl = focused && focused != parentWidget() && parentWidget()->isAncestorOf(focused);
    if (!isControl || focused->window() != window())
        return;
    m_control = focused;
    // A control also moves when one of its ancestors does.
    for (QWidget *widget = focused; widget != parentWidget(); widget = widget->parentWidget()) {
        widget->installEventFilter(this);
        m_watched.append(widget);
    }
    place();
}

void FocusRing::leaveControl()
{
    for (const QPointer<QWidget> &widget : std::exchange(m_watched, {})) {
        if (widget)
            widget->removeEventFilter(this);
    }
    m_control = nullptr;
    hide();
}

bool FocusRing::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        takeInput(watched, true);
        break;
    case QEvent::MouseButtonPress:
        takeInput(watched, false);
        break;
    case QEvent::Show:
        // The window sees all input first. Its handle may have been replaced since it was last shown.
        if (QWindow *handle = window()->windowHandle(); handle && watched == parentWidget())
            handle->installEventFilter(this);
        [[fallthrough]];
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Hide:
        if (watched != parentWidget())
            place();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void FocusRing::takeInput(QObject *watched, bool isKey)
{
    if (watched != window()->windowHandle() || !parentWidget()->isVisible())
        return;
    lastInputWasKey = isKey;
    place();
}

void FocusRing::place()
{
    if (!m_control || !lastInputWasKey || !m_control->isVisible()) {
        hide();
        return;
    }
    const QPoint corner = m_control->mapTo(parentWidget(), QPoint(0, 0));
    const int margin = reach();
    setGeometry(QRect(corner, m_control->size()).adjusted(-margin, -margin, margin, margin));
    raise();
    show();
}

double FocusRing::radius() const
{
    const double largest = std::min(width(), height()) / 2.0;
    const bool round = qobject_cast<IconButton *>(m_control) || m_control->property("primary").toBool();
    return round ? largest : std::min<double>(largest, CardStyle::scaled(controlRadius + ringGap));
}

void FocusRing::paintEvent(QPaintEvent *)
{
    if (!m_control)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double line = CardStyle::scaled(CardStyle::focusRingWidth);
    painter.setPen(QPen(CardStyle::colours().focusRing, line));
    const QRectF ring = QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2);
    painter.drawRoundedRect(ring, radius(), radius());
}
