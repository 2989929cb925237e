// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/KTMP3ConfigureWndCtrl.h"

#include "platform/KeyPath.h"
#include "platform/ThreadCheck.h"
#include "settings/ConfigureSheet.h"

using namespace Qt::StringLiterals;

KTMP3ConfigureWndCtrl *KTMP3ConfigureWndCtrl::shareConfigureWndCtrl()
{
    platform::assertMainThread();
    // Never destroyed: windows must not outlive the application object, which dies before statics do.
    static auto *const shared = new KTMP3ConfigureWndCtrl(u"KTMP3ConfigureWndCtrl"_s);
    return shared;
}

QStringList KTMP3ConfigureWndCtrl::keyPathsForValuesAffectingSelectedTag()
{
    return {u"config.encoderTarget"_s};
}

QStringList KTMP3ConfigureWndCtrl::keyPathsForValuesAffectingEnableQualityTarget()
{
    return {u"selectedTag"_s};
}

KTMP3ConfigureWndCtrl::KTMP3ConfigureWndCtrl(const QString &windowNibName)
    : WindowController(windowNibName)
{
    platform::announceDerivedProperties(this);
}

void KTMP3ConfigureWndCtrl::beginSheetForModalWindow(
    QWidget *mainWnd, const QSharedPointer<KTMp3LameConfig> &configure)
{
    setConfig(configure);
    okAction();
    m_mainWnd = mainWnd;
    if (mainWnd)
        static_cast<ConfigureSheet *>(window())->beginOn(mainWnd);
}

void KTMP3ConfigureWndCtrl::okAction(QObject *)
{
    if (m_mainWnd && isWindowLoaded())
        static_cast<ConfigureSheet *>(window())->end();
}

void KTMP3ConfigureWndCtrl::setConfig(const QSharedPointer<KTMp3LameConfig> &config)
{
    if (m_config == config)
        return;
    m_config = config;
    Q_EMIT configChanged();
}

void KTMP3ConfigureWndCtrl::setEncodeQuality(double encodeQuality)
{
    if (m_encodeQuality == encodeQuality)
        return;
    m_encodeQuality = encodeQuality;
    Q_EMIT encodeQualityChanged();
}

void KTMP3ConfigureWndCtrl::setVbrModeDesc(const QString &vbrModeDesc)
{
    if (m_vbrModeDesc == vbrModeDesc)
        return;
    m_vbrModeDesc = vbrModeDesc;
    Q_EMIT vbrModeDescChanged();
}

int KTMP3ConfigureWndCtrl::selectedTag() const
{
    return m_config && m_config->encoderTarget() != 0 ? 1 : 0;
}

void KTMP3ConfigureWndCtrl::setSelectedTag(int tag)
{
    if (m_config)
        m_config->setEncoderTarget(tag != 0 ? 1 : 0);
}

bool KTMP3ConfigureWndCtrl::enableQualityTarget() const
{
    return m_config && m_config->encoderTarget() == 1;
}

QWidget *KTMP3ConfigureWndCtrl::loadWindow()
{
    return new ConfigureSheet(this);
}
