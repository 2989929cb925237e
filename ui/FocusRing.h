// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointer>
#include <QWidget>

// Shows where the keyboard is: a ring around the focused control of a window, once the focus was moved with
// the keyboard. A click hides it. One mechanism for every kind of control, outside of the control, so that no
// layout moves.
class FocusRing : public QWidget {
    Q_OBJECT

public:
    // The window owns the ring.
    static void installOn(QWidget *window);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit FocusRing(QWidget *window);
    void followFocus(QWidget *focused);
    void leaveControl();
    void place();
    double radius() const;

    QPointer<QWidget> m_control;
    bool m_byKeyboard = false;
};
