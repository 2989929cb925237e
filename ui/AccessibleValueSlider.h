// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessibleWidget>

class ValueSlider;

// A value slider for assistive technology: in amounts, not in positions of the handle.
class AccessibleValueSlider : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    // Registers it with the accessibility layer. Every slider calls this.
    static void install();

    explicit AccessibleValueSlider(ValueSlider *slider);

    void *interface_cast(QAccessible::InterfaceType type) override;
    QString text(QAccessible::Text kind) const override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant &value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

private:
    ValueSlider *slider() const;
};
