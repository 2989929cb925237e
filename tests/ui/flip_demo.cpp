// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Two cards that turn over into each other, driven by their buttons, for tests on a whole desktop. Each flip
// writes one line to standard output: direction, frames, dropped frames, seconds, longest frame in
// milliseconds.

#include "testbed/DemoCards.h"
#include "ui/flip/FliprView.h"
#include "ui/flip/NSWindow_Flipr.h"

#include <QApplication>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <cstdio>

namespace {

// A desktop of one's own behind the cards: compositors show the display's root window or not, as they please.
class Backdrop : public QWidget {
public:
    Backdrop()
        : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnBottomHint)
    {
        setAttribute(Qt::WA_X11NetWmWindowTypeDesktop);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setGeometry(screen()->geometry());
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QLinearGradient gradient(rect().topLeft(), rect().bottomRight());
        gradient.setColorAt(0, QColor(0x93, 0xa6, 0xb8));
        gradient.setColorAt(1, QColor(0x5d, 0x6e, 0x80));
        QPainter(this).fillRect(rect(), gradient);
    }
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    Backdrop backdrop;
    backdrop.show();
    testbed::RecorderCard recorder;
    testbed::PreferencesCard preferences;
    const auto *view = NSWindow_Flipr::flippingWindow()->findChild<FliprView *>();
    const char *direction = "forward";
    QObject::connect(recorder.preferences, &QAbstractButton::clicked, &preferences, [&] {
        direction = "forward";
        NSWindow_Flipr::flipToShowWindow(&recorder, &preferences, true);
    });
    QObject::connect(preferences.done, &QAbstractButton::clicked, &recorder, [&] {
        direction = "backward";
        NSWindow_Flipr::flipToShowWindow(&preferences, &recorder, false);
    });
    QObject::connect(view, &FliprView::flipEnded, &recorder, [&] {
        const auto statistics = view->statistics();
        std::printf("%s %d %d %.3f %.2f\n", direction, statistics.frames, statistics.droppedFrames,
            statistics.seconds, double(statistics.longestFrameTime) * 1e3);
        std::fflush(stdout);
    });
    recorder.move(400, 260);
    recorder.show();
    return QApplication::exec();
}
