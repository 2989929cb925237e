// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/AccessibleValueSlider.h"
#include "ui/ValueSlider.h"

namespace {

QAccessibleInterface *interfaceFor(const QString &className, QObject *object)
{
    auto *slider = qobject_cast<ValueSlider *>(object);
    if (!slider || className != QLatin1String(slider->metaObject()->className()))
        return nullptr;
    return new AccessibleValueSlider(slider);
}

} // namespace

void AccessibleValueSlider::install()
{
    // Installing the same factory again does nothing.
    QAccessible::installFactory(interfaceFor);
}

AccessibleValueSlider::AccessibleValueSlider(ValueSlider *slider)
    : QAccessibleWidget(slider, QAccessible::Slider)
{
}

ValueSlider *AccessibleValueSlider::slider() const
{
    return static_cast<ValueSlider *>(object());
}

void *AccessibleValueSlider::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

QString AccessibleValueSlider::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Value)
        return QString::number(slider()->amount());
    return QAccessibleWidget::text(kind);
}

QVariant AccessibleValueSlider::currentValue() const
{
    return slider()->amount();
}

void AccessibleValueSlider::setCurrentValue(const QVariant &value)
{
    if (slider()->isEnabled())
        slider()->setAmount(value.toDouble());
}

QVariant AccessibleValueSlider::maximumValue() const
{
    return slider()->maximumAmount();
}

QVariant AccessibleValueSlider::minimumValue() const
{
    return slider()->minimumAmount();
}

QVariant AccessibleValueSlider::minimumStepSize() const
{
    return slider()->amountStep();
}
