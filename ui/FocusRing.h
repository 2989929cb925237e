// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

// Shows where the keyboard is: a ring around the focused control of a card, once the focus has been moved
// with the keyboard. A click hides it. One mechanism for every kind of control, and outside the control, so
// that no layout moves.
class FocusRing : public QWidget {
    Q_OBJECT

public:
    // The card owns the ring.
    explicit FocusRing(QWidget *card);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void followFocus(QWidget *focused);
    void leaveControl();
    void takeInput(QObject *watched, bool isKey);
    void place();
    double radius() const;

    QPointer<QWidget> m_control;
    // The control and its ancestors within the card.
    QList<QPointer<QWidget>> m_watched;
};
