// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QRadioButton>

// One of a row of mutually exclusive choices, drawn as a segment. The row is a QFrame with the dynamic
// property `segments` set, which gives it its sunken ground.
class SegmentButton : public QRadioButton {
    Q_OBJECT

public:
    explicit SegmentButton(QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool hitButton(const QPoint &position) const override;

private:
    QColor ground() const;
};
