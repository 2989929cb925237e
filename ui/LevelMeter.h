// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ui/LevelBallistics.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>
#include <array>
#include <functional>

// Two bars, left above right, on a logarithmic scale from green to red. While it runs it asks for new peaks
// up to 20 times a second; at rest, or where nobody can see it, it does not wake up at all.
class LevelMeter : public QWidget {
    Q_OBJECT

public:
    // The largest magnitude of each channel since it was last asked, 1 is full scale.
    using Source = std::function<std::array<float, 2>()>;

    explicit LevelMeter(QWidget *parent = nullptr);

    void setSource(Source source);
    // While it does not run, the bars fall to rest and stay there.
    void setRunning(bool running);
    // While it runs it makes its next step now, and not by a clock of its own: something beside it is drawn,
    // and to wake up and begin a frame costs more than what is drawn in it.
    void moveAlong();
    // How far the longer bar reaches.
    int percent() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    struct Bar {
        LevelBallistics ballistics;
        double lit = 0; // its length, to a pixel of the screen: what a repaint would change
        bool clips = false;
    };

    bool canBeSeen() const;
    bool isAtRest() const;
    void watchWindow();
    void startOrStopTimer();
    void advance();
    void refresh(int channel, double ratio);
    void drawAnew(const QRectF &part);
    QRectF barRectangle(int channel) const;
    void paintBar(QPainter &painter, const QRectF &track, const Bar &bar, const QBrush &light) const;

    Source m_source;
    bool m_running = false;
    std::array<Bar, 2> m_bars;
    QBasicTimer m_timer;
    QElapsedTimer m_sinceLast;
};
