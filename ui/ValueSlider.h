// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QSlider>

// A horizontal slider for an amount that need not be a whole number. It keeps exactly the amount that is
// set, even between its steps; only the user moves in steps. Dragging snaps to the detents, the page keys
// move from one to the next, and assistive technology reads and sets the amount itself.
class ValueSlider : public QSlider {
    Q_OBJECT
    Q_PROPERTY(double amount READ amount WRITE setAmount NOTIFY amountChanged)

public:
    explicit ValueSlider(QWidget *parent = nullptr);

    // Sets the amount to the minimum. The last step may be shorter than the others.
    void setScale(double minimum, double maximum, double step);
    void setDetents(const QList<double> &detents) { m_detents = detents; }

    double amount() const { return m_amount; }
    // Clamps. An amount that is not a number is ignored.
    void setAmount(double amount);
    double minimumAmount() const { return m_minimum; }
    double maximumAmount() const { return m_maximum; }
    double amountStep() const { return m_step; }

Q_SIGNALS:
    void amountChanged();

private:
    double amountAt(int position) const;
    int positionOf(double amount) const;
    void takePosition();
    void adjustAction(int action);
    void goToDetent();
    void goToNextDetent(bool upwards);

    double m_minimum = 0;
    double m_maximum = 1;
    double m_step = 1;
    double m_amount = 0;
    QList<double> m_detents;
};
