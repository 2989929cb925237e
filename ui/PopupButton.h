// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPushButton>

// The sunken field under which a menu pops up: its text shortened in the middle with the whole text as tool
// tip, and a chevron at its end.
class PopupButton : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)

public:
    explicit PopupButton(QWidget *parent = nullptr);

    void setText(const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QRect textRect() const;
    QRect chevronRect() const;
};
