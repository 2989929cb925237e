// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/PreferencesCard.h"

#include "platform/Binding.h"
#include "settings/AttributedTitle.h"
#include "settings/EncoderControls.h"
#include "settings/HBPreferencesWndCtrl.h"
#include "settings/RecordingEstimate.h"
#include "ui/CardStyle.h"
#include "ui_HBPreferencesWndCtrl.h"

#include <QMenu>
#include <QShortcut>
#include <chrono>

using namespace Qt::StringLiterals;
using platform::bind;

namespace {

constexpr std::chrono::seconds diskInterval(2);

} // namespace

PreferencesCard::PreferencesCard(HBPreferencesWndCtrl *controller)
    : m_controller(controller)
    , m_ui(std::make_unique<Ui::HBPreferencesWndCtrl>())
{
    setWindowTitle(u"Preferences"_s);
    m_ui->setupUi(content());
    CardStyle::scaleLayout(content()->layout());
    bindControls();
    connectCommands();
}

PreferencesCard::~PreferencesCard() = default;

void PreferencesCard::bindControls()
{
    HBPreferencesWndCtrl *source = m_controller;
    bindTitle(m_ui->done, source, u"attributeTitleForDone"_s);
    bindTitle(m_ui->constantBitrate, source, u"attributeTitleForCBR"_s);
    bindTitle(m_ui->qualityTitle, source, u"attributeTitleForQuality"_s);
    bindTitle(m_ui->bitrateTitle, source, u"attributeTitleForBitrate"_s);

    const EncoderControls encoder = encoderControlsOf(*m_ui);
    encoder.bindToConfigOf(source);
    encoder.bindTargetTo(source, u"config.encoderTarget"_s);
    bind(this, source, u"config.encoderTarget"_s, [encoder](const QVariant &target) {
        encoder.setQualityEnabled(target.toInt() != KTMp3LameConfig::BitrateTarget);
        encoder.setBitrateEnabled(target.toInt() == KTMp3LameConfig::BitrateTarget);
    });

    bind(m_ui->workingFolder, "text", source, u"workingPath"_s);
    bind(m_ui->estimate, source, u"recordingEstimate"_s, [this](const QVariant &sentence) {
        m_ui->estimate->setText(sentence.toString());
        if (const auto config = m_controller->config())
            m_ui->estimate->setToolTip(RecordingEstimate(*config).explanation());
    });
}

void PreferencesCard::connectCommands()
{
    const auto send = [this](QAbstractButton *button, void (HBPreferencesWndCtrl::*action)(QObject *)) {
        connect(button, &QAbstractButton::clicked, m_controller,
            [this, button, action] { (m_controller->*action)(button); });
    };
    send(m_ui->boxEncoderEngine, &HBPreferencesWndCtrl::popupEncodeEngineQuality);
    send(m_ui->boxVbrMode, &HBPreferencesWndCtrl::popupVBRMode);
    send(m_ui->chooseFolder, &HBPreferencesWndCtrl::selectWorkingPathAction);
    send(m_ui->showFolder, &HBPreferencesWndCtrl::showWorkingPathAction);
    send(m_ui->done, &HBPreferencesWndCtrl::doneAction);
    connect(m_ui->encodeEngineMenu, &QMenu::triggered, m_controller,
        &HBPreferencesWndCtrl::encoderEngineQualityChanged);
    connect(m_ui->vbrModeMenu, &QMenu::triggered, m_controller, &HBPreferencesWndCtrl::vbrModeChanged);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, m_ui->done, &QPushButton::click);
    connect(&m_diskTimer, &QTimer::timeout, m_controller, &HBPreferencesWndCtrl::askForRoom);
}

QMenu *PreferencesCard::vbrModeMenu() const
{
    return m_ui->vbrModeMenu;
}

QWidget *PreferencesCard::boxVbrMode() const
{
    return m_ui->boxVbrMode;
}

QMenu *PreferencesCard::encodeEngineMenu() const
{
    return m_ui->encodeEngineMenu;
}

QWidget *PreferencesCard::boxEncoderEngine() const
{
    return m_ui->boxEncoderEngine;
}

void PreferencesCard::showEvent(QShowEvent *event)
{
    m_controller->askForRoom();
    m_diskTimer.start(diskInterval);
    CardWindow::showEvent(event);
}

void PreferencesCard::hideEvent(QHideEvent *event)
{
    m_diskTimer.stop();
    CardWindow::hideEvent(event);
}
