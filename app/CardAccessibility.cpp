// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/CardAccessibility.h"

#include "ui/CardWindow.h"
#include "ui/LevelMeter.h"
#include "ui/TimeLabel.h"

#include <QAccessibleWidget>

namespace CardAccessibility {

namespace {

class AccessibleSurface : public QAccessibleWidget {
public:
    explicit AccessibleSurface(QWidget *surface)
        : QAccessibleWidget(surface)
    {
    }

    QAccessible::Role role() const override
    {
        return widget()->isWindow() ? QAccessible::Window : QAccessible::Pane;
    }
};

// Its text changes ten times a second. A label announces every change unless it has a name of its own; this
// one has, and tells its text in place of it. Readers keep names, but ask for a text each time.
class AccessibleClock : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit AccessibleClock(TimeLabel *clock)
        : QAccessibleWidget(clock, QAccessible::StaticText)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? time() : QAccessibleWidget::text(kind);
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(int start, int end) const override { return time().mid(start, end - start); }
    int characterCount() const override { return int(time().size()); }
    QRect characterRect(int) const override { return rect(); }
    int offsetAtPoint(const QPoint &) const override { return 0; }
    QString attributes(int, int *start, int *end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override { }
    int selectionCount() const override { return 0; }
    void selection(int, int *start, int *end) const override { *start = *end = 0; }
    void addSelection(int, int) override { }
    void removeSelection(int) override { }
    void setSelection(int, int, int) override { }
    void scrollToSubstring(int, int) override { }

private:
    QString time() const { return static_cast<TimeLabel *>(object())->text(); }
};

// The toolkit has no role for a level, and on Linux its indicator is unknown. A reader that is asked says how
// far the bar reaches; changes are not announced, because they would never end.
class AccessibleMeter : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleMeter(LevelMeter *meter)
        : QAccessibleWidget(meter, QAccessible::ProgressBar)
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QVariant currentValue() const override { return static_cast<LevelMeter *>(object())->percent(); }
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override { return 100; }
    QVariant minimumStepSize() const override { return 1; }
    void setCurrentValue(const QVariant &) override { }
};

// Asked for each class that the object has, its own first.
QAccessibleInterface *interfaceFor(const QString &className, QObject *object)
{
    if (!object->isWidgetType() || className != QLatin1String(object->metaObject()->className()))
        return nullptr;
    if (auto *clock = qobject_cast<TimeLabel *>(object))
        return new AccessibleClock(clock);
    if (auto *meter = qobject_cast<LevelMeter *>(object))
        return new AccessibleMeter(meter);
    auto *widget = static_cast<QWidget *>(object);
    if (widget->property("separator").toBool())
        return new QAccessibleWidget(widget, QAccessible::Separator);
    const bool isOwnWindow = widget->windowType() == Qt::Window && !className.startsWith(u'Q');
    return isOwnWindow || qobject_cast<CardWindow *>(widget) ? new AccessibleSurface(widget) : nullptr;
}

} // namespace

void install()
{
    QAccessible::installFactory(interfaceFor);
}

} // namespace CardAccessibility
