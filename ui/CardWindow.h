// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class TitleStrip;

// A frameless card that draws itself: rounded, translucent at its corners, with its own title strip. A layout
// made in Designer goes into its content area: `ui.setupUi(card.content())`.
//
// A card is shown on a stage, or as a window of its own, as a sheet is. The widget is exactly the card,
// without a margin for a shadow, so that its frame is what is turned over and placed.
class CardWindow : public QWidget {
    Q_OBJECT

public:
    enum TitleButton { NoTitleButtons = 0, MinimiseButton = 1, CloseButton = 2 };
    Q_DECLARE_FLAGS(TitleButtons, TitleButton)

    explicit CardWindow(TitleButtons buttons = NoTitleButtons, QWidget *parent = nullptr);

    QWidget *content() const { return m_content; }
    TitleStrip *titleStrip() const { return m_titleStrip; }

    // What a card looks like without its controls, in a part of one of them. For a control that draws often:
    // with WA_OpaquePaintEvent and this ground nothing below it is drawn anew. `painter` is in the control's
    // coordinates, and the ground reaches a little beyond the part, for pixels that are shared.
    static void paintGround(QPainter &painter, const QWidget *control, const QRect &part);

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    // Return presses the focused button, as Space does.
    void keyPressEvent(QKeyEvent *event) override;
    // A button's own shortcut acts at once. The toolkit would keep the button down for a tenth of a second
    // first.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    TitleStrip *m_titleStrip;
    QWidget *m_content;
    bool m_roundedCorners = true;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(CardWindow::TitleButtons)
