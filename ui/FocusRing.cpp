// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/FocusRing.h"
#include "ui/CardStyle.h"
#include "ui/IconButton.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPainter>
#include <QPushButton>
#include <algorithm>

namespace {

// Between the control and the ring.
constexpr int gap = 2;
constexpr int controlRadius = 7;

int reach()
{
    return CardStyle::scaled(gap + CardStyle::focusRingWidth);
}

} // namespace

void FocusRing::installOn(QWidget *window)
{
    new FocusRing(window);
}

FocusRing::FocusRing(QWidget *window)
    : QWidget(window)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { followFocus(now); });
    qApp->installEventFilter(this);
}

void FocusRing::followFocus(QWidget *focused)
{
    leaveControl();
    if (!focused || focused == parentWidget() || focused->window() != parentWidget())
        return;
    m_control = focused;
    place();
}

void FocusRing::leaveControl()
{
    m_control = nullptr;
    hide();
}

bool FocusRing::eventFilter(QObject *watched, QEvent *event)
{
    if (!watched->isWidgetType() && !watched->isWindowType())
        return false;
    switch (event->type()) {
    case QEvent::KeyPress:
        m_byKeyboard = true;
        place();
        break;
    case QEvent::MouseButtonPress:
        m_byKeyboard = false;
        hide();
        break;
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
        // A control also moves when one of its ancestors does.
        if (m_control && watched->isWidgetType() && watched != this
            && (watched == m_control || static_cast<QWidget *>(watched)->isAncestorOf(m_control)))
            place();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void FocusRing::place()
{
    if (!m_control || !m_byKeyboard || !m_control->isVisible()) {
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
    return round ? largest : std::min<double>(largest, CardStyle::scaled(controlRadius + gap));
}

void FocusRing::paintEvent(QPaintEvent *)
{
    if (!m_control)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double line = CardStyle::scaled(CardStyle::focusRingWidth);
    painter.setPen(QPen(CardStyle::focusRing, line));
    const QRectF ring = QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2);
    painter.drawRoundedRect(ring, radius(), radius());
}
