// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

// Darkens a card for as long as it lives, because a sheet lies on the card and takes its input.
class SheetShade : public QWidget {
    Q_OBJECT

public:
    // The card owns the shade.
    explicit SheetShade(QWidget *card);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
};
