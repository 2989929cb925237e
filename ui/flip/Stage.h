// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ui/flip/FlipShadow.h"

#include <QHash>
#include <QPointer>
#include <QWidget>

class Curtain;

// The program's one top-level window. It shows one card at a time and exchanges cards in place, so that
// nobody gets to place a window anew; sheets, alerts and the entry in the task bar are the stage's. Cards are
// plain widgets that belong to somebody else and may be destroyed at any time. Main thread only.
class Stage : public QWidget {
    Q_OBJECT

public:
    explicit Stage(QWidget *parent = nullptr);
    ~Stage() override;

    // The stage that a card is on; null for everything else.
    static Stage *of(const QWidget *card);

    // Takes a card from wherever it is. Cards are hidden until it is their turn.
    void addCard(QWidget *card);
    // The card whose turn it is; null before the first one, and when it was destroyed.
    QWidget *card() const { return m_card; }
    // Shows this card instead of the other, at the same place. The keyboard goes where it was on that card.
    void setCard(QWidget *card);
    // Has a card laid out and brought up to date, as if it were shown, while the other one can still be seen;
    // the title is its own already.
    void prepareCard(QWidget *card);

    // The place of the card, in the stage's coordinates.
    QRect cardRect() const;

    // While the curtain is drawn the stage is empty and transparent, whatever happens on it.
    void setCurtainDrawn(bool drawn);
    // Lets the card be seen through a curtain that is drawn, but for its shadow, its corners and its edges:
    // what lies over it and looks like it may go then, and a card remains.
    void openCurtain();
    // What is to be seen now is with the window system when this returns.
    void drawNow();

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fit();
    // Where the card is all that is seen.
    QRegion solidPart() const;
    void prepareShadow();
    void drawShadow(QPainter &painter, const QRect &part);

    QMargins m_margins;
    // Shown, but not yet on the screen.
    bool m_isNew = false;
    FlipShadow m_shadow;
    // What the shadow was prepared for.
    QSize m_shadowSize;
    double m_shadowRatio = 0;
    QPointer<QWidget> m_card;
    // Where the keyboard was on a card before it came onto the stage, which the toolkit forgets then.
    QHash<QWidget *, QPointer<QWidget>> m_controls;
    Curtain *m_curtain;
};
