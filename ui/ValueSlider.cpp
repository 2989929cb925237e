// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/ValueSlider.h"
#include "ui/AccessibleValueSlider.h"
#include "ui/CardStyle.h"

#include <algorithm>
#include <cmath>

namespace {

// A detent reaches this far on both sides, in points.
constexpr double detentReach = 4;

} // namespace

ValueSlider::ValueSlider(QWidget *parent)
    : QSlider(Qt::Horizontal, parent)
{
    AccessibleValueSlider::install();
    connect(this, &QSlider::valueChanged, this, &ValueSlider::takePosition);
    connect(this, &QSlider::actionTriggered, this, &ValueSlider::adjustAction);
}

void ValueSlider::setScale(double minimum, double maximum, double step)
{
    m_minimum = minimum;
    m_maximum = maximum;
    m_step = step;
    setRange(0, static_cast<int>(std::ceil((maximum - minimum) / step)));
    setAmount(minimum);
}

void ValueSlider::setAmount(double amount)
{
    if (std::isnan(amount))
        return;
    amount = std::clamp(amount, m_minimum, m_maximum);
    if (amount == m_amount)
        return;
    m_amount = amount;
    setValue(positionOf(amount));
    Q_EMIT amountChanged();
}

double ValueSlider::amountAt(int position) const
{
    return std::min(m_minimum + position * m_step, m_maximum);
}

int ValueSlider::positionOf(double amount) const
{
    return static_cast<int>(std::lround((amount - m_minimum) / m_step));
}

void ValueSlider::takePosition()
{
    // While `setAmount` moves the handle, the amount is set already, and may lie between two positions.
    if (value() != positionOf(m_amount))
        setAmount(amountAt(value()));
}

// The position is the new one here; the value has not changed yet.
void ValueSlider::adjustAction(int action)
{
    if (action == SliderMove)
        goToDetent();
    else if (!m_detents.isEmpty() && (action == SliderPageStepAdd || action == SliderPageStepSub))
        goToNextDetent(action == SliderPageStepAdd);
}

void ValueSlider::goToDetent()
{
    const double reach = CardStyle::scaled(detentReach) * (m_maximum - m_minimum) / std::max(width(), 1);
    const double amount = amountAt(sliderPosition());
    const auto distance = [amount](double detent) { return std::abs(detent - amount); };
    const auto nearest = std::ranges::min_element(m_detents, {}, distance);
    if (nearest != m_detents.end() && distance(*nearest) <= reach)
        setSliderPosition(positionOf(*nearest));
}

void ValueSlider::goToNextDetent(bool upwards)
{
    int next = upwards ? maximum() : minimum();
    for (const double detent : std::as_const(m_detents)) {
        const int position = positionOf(detent);
        if (upwards && position > value())
            next = std::min(next, position);
        if (!upwards && position < value())
            next = std::max(next, position);
    }
    setSliderPosition(next);
}
