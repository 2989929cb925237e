// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/PreferencesCard.h"

#include "platform/Binding.h"
#include "settings/AttributedTitle.h"
#include "settings/EncoderForm.h"
#include "settings/HBPreferencesWndCtrl.h"
#include "settings/RecordingEstimate.h"
#include "ui/CardStyle.h"
#include "ui_EncoderForm.h"
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
    setWindowTitle(tr("Preferences"));
    setAccessibleName(windowTitle());
    m_ui->setupUi(content());
    CardStyle::scaleLayout(content()->layout());
    // The longest sentence takes two lines. Nothing moves when it comes or goes.
    m_ui->estimate->setMinimumHeight(2 * m_ui->estimate->fontMetrics().lineSpacing());
    connectOutlets();
    bindControls();
    connectCommands();
}

PreferencesCard::~PreferencesCard() = default;

void PreferencesCard::connectOutlets()
{
    const Ui::EncoderForm &encoder = m_ui->encoder->controls();
    m_controller->vbrModeMenu = encoder.vbrModeMenu;
    m_controller->boxVbrMode = encoder.boxVbrMode;
    m_controller->encodeEngineMenu = encoder.encodeEngineMenu;
    m_controller->boxEncoderEngine = encoder.boxEncoderEngine;
    m_controller->revealSwitch = m_ui->reveal;
}

void PreferencesCard::bindControls()
{
    const Ui::EncoderForm &encoder = m_ui->encoder->controls();
    bindTitle(m_ui->done, m_controller, u"attributeTitleForDone"_s);
    bindTitle(encoder.constantBitrate, m_controller, u"attributeTitleForCBR"_s);
    bindTitle(encoder.qualityTitle, m_controller, u"attributeTitleForQuality"_s);
    bindTitle(encoder.bitrateTitle, m_controller, u"attributeTitleForBitrate"_s);

    m_ui->encoder->bindTo(m_controller, u"config.encoderTarget"_s);
    bind(m_ui->encoder, m_controller, u"config.encoderTarget"_s, [this](const QVariant &target) {
        m_ui->encoder->setQualityEnabled(target.toInt() != KTMp3LameConfig::BitrateTarget);
    });

    bind(m_ui->workingFolder, "text", m_controller, u"workingFolderText"_s);
    // Where no folder is known the path is a request to choose one.
    bind(m_ui->showFolder, m_controller, u"workingPath"_s,
        [this](const QVariant &path) { m_ui->showFolder->setEnabled(path.toString().startsWith(u'/')); });
    bind(m_ui->estimate, m_controller, u"recordingEstimate"_s, [this](const QVariant &sentence) {
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
    const Ui::EncoderForm &encoder = m_ui->encoder->controls();
    send(encoder.boxEncoderEngine, &HBPreferencesWndCtrl::popupEncodeEngineQuality);
    send(encoder.boxVbrMode, &HBPreferencesWndCtrl::popupVBRMode);
    send(m_ui->chooseFolder, &HBPreferencesWndCtrl::selectWorkingPathAction);
    send(m_ui->showFolder, &HBPreferencesWndCtrl::showWorkingPathAction);
    send(m_ui->done, &HBPreferencesWndCtrl::doneAction);
    connect(encoder.encodeEngineMenu, &QMenu::triggered, m_controller,
        &HBPreferencesWndCtrl::encoderEngineQualityChanged);
    connect(encoder.vbrModeMenu, &QMenu::triggered, m_controller, &HBPreferencesWndCtrl::vbrModeChanged);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, m_ui->done, &QPushButton::click);
    connect(&m_diskTimer, &QTimer::timeout, m_controller, &HBPreferencesWndCtrl::askForRoom);
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
