// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPoint>

class AppDelegate;
class QMenu;
class QWidget;

// The last take, to be taken in hand: its line can be dragged out of the card as a file once it is finished,
// and has a menu, which the button beside it has too for those without a pointer. Main thread only.
class TakeHandle : public QObject {
    Q_OBJECT

public:
    // The delegate outlives the widgets, of which `line` owns this.
    TakeHandle(AppDelegate *delegate, QWidget *line, QWidget *button);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void offerMenu(QWidget *widget);
    void fillMenu();
    bool isWhole() const;
    void followState();
    void drag();

    AppDelegate *m_delegate;
    QWidget *m_line;
    QMenu *m_menu;
    QPoint m_pressedAt;
};
