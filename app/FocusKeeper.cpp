// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/FocusKeeper.h"

#include <QKeyEvent>

namespace {

bool takesFocus(const QWidget *widget)
{
    return widget->isEnabled() && widget->isVisible() && !widget->isWindow()
        && (widget->focusPolicy() & Qt::TabFocus);
}

} // namespace

FocusKeeper::FocusKeeper(QWidget *window)
    : QObject(window)
    , m_window(window)
{
    window->installEventFilter(this);
}

void FocusKeeper::setEnabled(QWidget *control, bool enabled)
{
    if (!enabled)
        rest(control);
    control->setEnabled(enabled);
    if (enabled)
        restore(control);
}

void FocusKeeper::setVisible(QWidget *control, bool visible)
{
    if (!visible)
        rest(control);
    control->setVisible(visible);
    if (visible)
        restore(control);
}

void FocusKeeper::rest(QWidget *control)
{
    if (m_window->focusWidget() != control)
        return;
    m_resting = control;
    m_window->setFocus(Qt::OtherFocusReason);
}

void FocusKeeper::restore(QWidget *control)
{
    const bool focusHasMovedOn = m_window->focusWidget() && m_window->focusWidget() != m_window;
    if (m_resting != control || focusHasMovedOn || !control->isEnabled())
        return;
    m_resting.clear();
    control->setFocus(Qt::OtherFocusReason);
}

bool FocusKeeper::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && m_resting && m_window->focusWidget() == m_window) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab)
            return leave(key == Qt::Key_Tab);
    }
    return QObject::eventFilter(watched, event);
}

// To the next control that can have the focus, counted from where the focus rested.
bool FocusKeeper::leave(bool forward)
{
    QWidget *start = m_resting;
    const auto step = [forward](QWidget *widget) {
        return forward ? widget->nextInFocusChain() : widget->previousInFocusChain();
    };
    for (QWidget *next = step(start); next != start; next = step(next)) {
        if (!takesFocus(next))
            continue;
        m_resting.clear();
        next->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return true;
    }
    return false;
}
