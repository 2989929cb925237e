// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPointer>
#include <deque>

class QWidget;

namespace platform {

// Has a screen reader say something that the user has not asked for. Each text is an accessible object of
// its own, a notification in the window, that is announced as just shown: the readers say it at once,
// whatever has the focus, and one text after the other. Where no reader listens nothing is done. Main thread
// only.
class Announcer : public QObject {
    Q_OBJECT

public:
    // The announcements belong to the window, which must outlive this.
    explicit Announcer(QWidget *window, QObject *parent = nullptr);
    ~Announcer() override;

    void announce(const QString &text);

private:
    QWidget *m_window;
    // The last few: a reader asks for their texts in its own time.
    std::deque<unsigned> m_announced;
};

} // namespace platform
