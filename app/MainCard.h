// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/FocusKeeper.h"
#include "app/SoundWatch.h"
#include "app/StatusLine.h"
#include "ui/CardWindow.h"

#include <memory>

class AppDelegate;
class QAbstractButton;
class QMenu;

namespace Ui {
class MainWindow;
}

// The front of the card: its layout is resources/MainWindow.ui, its controls are bound to the controller's
// properties and send it the commands. It decides nothing itself.
class MainCard : public CardWindow {
    Q_OBJECT

public:
    // The delegate outlives the card, and is given its outlets.
    explicit MainCard(AppDelegate *delegate);
    ~MainCard() override;

private:
    void followState();
    void tellTime();
    void markStatus();
    void connectOutlets();
    void bindControls();
    void showDevice(const QString &device);
    void connectCommands();
    void nameShortcuts();
    void orderTabs();

    void bindEnabled(QWidget *control, const QString &keyPath);
    void bindVisible(QWidget *control, const QString &keyPath);
    void command(QAbstractButton *button, void (AppDelegate::*action)(QObject *));

    AppDelegate *m_delegate;
    std::unique_ptr<Ui::MainWindow> m_ui;
    QMenu *m_deviceMenu;
    SoundWatch m_sound;
    StatusLine *m_status;
    FocusKeeper m_focus;
};
