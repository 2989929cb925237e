// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointer>
#include <QWidget>

class IconButton;
class QAbstractButton;
class QHBoxLayout;

// The top of a card: the card's title in the middle, tools on the left, window buttons on the right. Dragging
// it moves the window that the card is in.
class TitleStrip : public QWidget {
    Q_OBJECT

public:
    explicit TitleStrip(QWidget *card);

    // Takes ownership of the button; the first tool is the leftmost.
    void addTool(QAbstractButton *button);
    void addMinimiseButton();
    void addCloseButton();
    // Null until they have been added.
    IconButton *minimiseButton() const { return m_minimise; }
    IconButton *closeButton() const { return m_close; }

protected:
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void dragTo(const QPoint &globalPosition);
    QRect titleRoom() const;
    void followTitle();

    QHBoxLayout *m_tools;
    QHBoxLayout *m_windowButtons;
    QString m_title; // as it is shown
    IconButton *m_minimise = nullptr;
    IconButton *m_close = nullptr;
    // The window's position minus the pointer's, while the left button is down on the strip.
    QPoint m_grip;
    QPoint m_pressPosition;
    bool m_pressed = false;
    bool m_dragging = false;
};
