// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/desktop/Announcer.h"
#include "platform/desktop/DesktopNotice.h"

#include <QObject>

class AppDelegate;
class QWidget;
class StatusLine;

// Carries what the status line says to those who do not look at it: to a screen reader each change of state
// and each warning, and to the desktop a warning about a take while another program or another card has the
// user's attention. A number that counts in a text is no news. Main thread only.
class Herald : public QObject {
    Q_OBJECT

public:
    // The delegate and the line outlive it; the line hears of a change of state before it does.
    Herald(const AppDelegate *delegate, const StatusLine *line, QWidget *card);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void tell();
    bool isInFront() const;
    void followNotice();
    QString spoken(int previousState) const;

    const AppDelegate *m_delegate;
    const StatusLine *m_line;
    const QWidget *m_card;
    platform::Announcer m_announcer;
    platform::DesktopNotice m_notice;
    int m_state;
    QString m_told;
    QString m_noticed;
};
