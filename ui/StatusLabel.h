// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ui/ElidedLabel.h"

#include <QBasicTimer>

// A text with a mark before it that shows at a glance, and not by its colour alone, what the text is about.
// Both stand together where the label's alignment puts them. A text that is too long is smaller, up to a
// point, because no word of it is to spare. Screen readers are told the text only.
class StatusLabel : public ElidedLabel {
    Q_OBJECT
    Q_PROPERTY(Mark mark READ mark WRITE setMark NOTIFY markChanged)

public:
    enum Mark {
        NoMark,
        RecordingMark, // a red dot that dims every other second, unless the user wants no animations
        PausedMark,
        PlayingMark,
        WarningMark // a triangle, and the text in its colour
    };
    Q_ENUM(Mark)

    explicit StatusLabel(QWidget *parent = nullptr);

    Mark mark() const { return m_mark; }
    void setMark(Mark mark);

    QSize sizeHint() const override;

Q_SIGNALS:
    void markChanged();

protected:
    QRect textRect() const override;
    QFont textFont() const override;
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    int roomForMark() const;
    QRectF markRect(const QRect &text) const;
    QColor markColour() const;
    void startOrStopTimer();
    void followMotion();

    Mark m_mark = NoMark;
    bool m_dimmed = false;
    QRectF m_markPlace; // where it was drawn last
    QBasicTimer m_timer;
};
