// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>

// The elapsed time in large light digits. Digits have cells of one width, whatever font the desktop has, so
// that no digit moves when another changes; a text that grows too long for its place is drawn smaller.
class TimeLabel : public QLabel {
    Q_OBJECT

public:
    explicit TimeLabel(QWidget *parent = nullptr);

    // Whether the time runs: bright digits, else the grey of labels.
    void setLive(bool live);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // The distance from the start of the text to each character's cell and to the end, in the label's font.
    // Public for the tests.
    QList<double> cellEdges() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    bool m_live = false;
    double m_digitWidth = 0; // of the widest digit
};
