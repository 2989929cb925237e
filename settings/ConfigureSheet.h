// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ui/CardWindow.h"

#include <QPointer>
#include <memory>

class KTMP3ConfigureWndCtrl;
class SheetShade;

namespace Ui {
class KTMP3ConfigureWndCtrl;
}

// The sheet of KTMP3ConfigureWndCtrl: what its controls are bound to, and which commands they send. Its
// host window owns it while it is open, and the controller otherwise. The controller outlives it.
class ConfigureSheet : public CardWindow {
    Q_OBJECT

public:
    explicit ConfigureSheet(KTMP3ConfigureWndCtrl *controller);
    ~ConfigureSheet() override;

    void beginOn(QWidget *host);
    void end();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void bindControls();
    void connectCommands();

    KTMP3ConfigureWndCtrl *m_controller;
    std::unique_ptr<Ui::KTMP3ConfigureWndCtrl> m_ui;
    QPointer<SheetShade> m_shade;
};
