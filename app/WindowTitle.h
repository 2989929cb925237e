// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class AppDelegate;
class QWidget;

// Keeps the title of the main card, and of the window while another card is up: what is being done, and how
// much has been recorded, to the second, so that it is read in the task bar too: "Recording 00:12 -
// Flipside", or "Recording 00:12 - Preferences - Flipside". Main thread only.
class WindowTitle : public QObject {
    Q_OBJECT

public:
    // The delegate outlives the card, which owns this.
    WindowTitle(const AppDelegate *delegate, QWidget *card);

private:
    void followState();
    void followTime();
    void show();
    QString titled(const QString &name) const;

    const AppDelegate *m_delegate;
    QWidget *m_card;
    const QString m_name; // of the program
    QString m_time;
    int m_state;
};
