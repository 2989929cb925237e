// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <cstdio>

// Once the window has been painted for the first time: prints the monotonic clock in nanoseconds and quits,
// or, with the argument --stay, only says so as the program does.
class FirstPaint : public QObject {
public:
    explicit FirstPaint(QWidget *window) { window->installEventFilter(this); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            // The window's children are painted, too, before the main loop comes round again.
            QTimer::singleShot(0, qApp, [] {
                if (QApplication::arguments().contains(QLatin1String("--stay"))) {
                    std::fputs("First paint.\n", stderr);
                    return;
                }
                const auto now = std::chrono::steady_clock::now().time_since_epoch();
                std::printf("%lld\n", static_cast<long long>(std::chrono::nanoseconds(now).count()));
                QApplication::quit();
            });
        }
        return false;
    }
};
