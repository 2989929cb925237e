// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ui/CardWindow.h"

#include <QTimer>
#include <memory>

class HBPreferencesWndCtrl;

namespace Ui {
class HBPreferencesWndCtrl;
}

// The card of HBPreferencesWndCtrl: what its controls are bound to, and which commands they send. The
// controller outlives it.
class PreferencesCard : public CardWindow {
    Q_OBJECT

public:
    explicit PreferencesCard(HBPreferencesWndCtrl *controller);
    ~PreferencesCard() override;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void connectOutlets();
    void bindControls();
    void connectCommands();

    HBPreferencesWndCtrl *m_controller;
    std::unique_ptr<Ui::HBPreferencesWndCtrl> m_ui;
    // Other programs write to the disk as well.
    QTimer m_diskTimer;
};
