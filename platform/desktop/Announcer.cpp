// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Announcer.h"

#include "platform/ThreadCheck.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QWidget>

namespace platform {

namespace {

// A reader that is further behind than this many texts is not told all of them.
constexpr std::size_t keptForReaders = 16;

// Every accessible object stands for another one.
struct Identity {
    QObject identity;
};

// Its text never changes: readers keep the name of an object that they have seen.
class Announcement : private Identity, public QAccessibleObject {
public:
    Announcement(QWidget *window, const QString &text)
        : QAccessibleObject(&identity)
        , m_window(window)
        , m_text(text)
    {
    }

    QAccessible::Role role() const override { return QAccessible::Notification; }
    QAccessible::State state() const override { return {}; }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? m_text : QString();
    }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_window); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }

private:
    QWidget *m_window;
    const QString m_text;
};

} // namespace

Announcer::Announcer(QWidget *window, QObject *parent)
    : QObject(parent)
    , m_window(window)
{
}

Announcer::~Announcer()
{
    for (const unsigned id : m_announced)
        QAccessible::deleteAccessibleInterface(id);
}

void Announcer::announce(const QString &text)
{
    assertMainThread();
    if (!QAccessible::isActive() || text.isEmpty())
        return;
    m_announced.push_back(QAccessible::registerAccessibleInterface(new Announcement(m_window, text)));
    QAccessibleEvent shown(QAccessible::accessibleInterface(m_announced.back()), QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
    if (m_announced.size() > keptForReaders) {
        QAccessible::deleteAccessibleInterface(m_announced.front());
        m_announced.pop_front();
    }
}

} // namespace platform
