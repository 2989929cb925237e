// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/FirstPaint.h"

#include "platform/Logging.h"
#include "platform/ThreadCheck.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>

namespace platform {

namespace {

class FirstPaint : public QObject {
public:
    FirstPaint(QWidget *widget, std::function<void()> work)
        : QObject(widget)
        , m_work(std::move(work))
    {
        widget->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            // The picture reaches the screen at the end of this event.
            QTimer::singleShot(0, this, [this] {
                qCDebug(lcPlatform, "First paint.");
                m_work();
                deleteLater();
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_work;
};

} // namespace

void afterFirstPaint(QWidget *widget, std::function<void()> work)
{
    assertMainThread();
    new FirstPaint(widget, std::move(work));
}

} // namespace platform
