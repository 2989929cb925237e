// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/Herald.h"

#include "app/AppDelegate.h"
#include "app/StatusLine.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWidget>

Herald::Herald(const AppDelegate *delegate, const StatusLine *line, QWidget *card)
    : QObject(card)
    , m_delegate(delegate)
    , m_line(line)
    , m_card(card)
    , m_announcer(card)
    , m_state(delegate->state())
    , m_told(line->topic())
{
    connect(line, &StatusLine::textChanged, this, &Herald::tell);
    connect(line, &StatusLine::warningChanged, this, &Herald::followNotice);
    connect(line, &StatusLine::soundAtStakeChanged, this, &Herald::followNotice);
    connect(delegate, &AppDelegate::stateChanged, this, &Herald::tell);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &Herald::followNotice);
    card->installEventFilter(this);
}

// The cards turn over.
bool Herald::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide)
        followNotice();
    return QObject::eventFilter(watched, event);
}

// Window systems do not say whether a window is covered, but whoever looks at the card has it in front. One
// that is minimised loses the keyboard, and with it the application is no longer active.
bool Herald::isInFront() const
{
    return m_card->isVisible() && QGuiApplication::applicationState() == Qt::ApplicationActive;
}

void Herald::tell()
{
    const int previousState = std::exchange(m_state, m_delegate->state());
    const QString news = m_line->topic();
    if (std::exchange(m_told, news) != news || previousState != m_state)
        m_announcer.announce(spoken(previousState));
    followNotice();
}

QString Herald::spoken(int previousState) const
{
    if (m_state != RecorderStateIdle || previousState == RecorderStateIdle)
        return m_line->text();
    return m_line->isWarning() ? tr("Stopped. %1").arg(m_line->text()) : tr("Stopped");
}

// What the last take lacks, and a microphone that is muted at rest, can wait until the user looks.
void Herald::followNotice()
{
    if (isInFront() || !m_line->isWarning() || !m_line->isSoundAtStake()) {
        m_noticed.clear();
        m_notice.takeBack();
        return;
    }
    const QString news = m_line->topic();
    if (std::exchange(m_noticed, news) != news)
        m_notice.show(m_line->text());
}
