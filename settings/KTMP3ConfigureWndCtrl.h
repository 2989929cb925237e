// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "encoder/KTMp3LameConfig.h"
#include "ui/WindowController.h"

// A sheet over any window in which the user edits an encoder configuration in place. Every change is in the
// caller's object at once; there is nothing to confirm or to cancel, so every way of closing the sheet means
// OK. Main thread only.
class KTMP3ConfigureWndCtrl : public WindowController {
    Q_OBJECT
    // The caller's own object, kept until the next sheet.
    Q_PROPERTY(QSharedPointer<KTMp3LameConfig> config READ config WRITE setConfig NOTIFY configChanged)
    // For controls to bind to; the controller itself does not use these two.
    Q_PROPERTY(double encodeQuality READ encodeQuality WRITE setEncodeQuality NOTIFY encodeQualityChanged)
    Q_PROPERTY(QString vbrModeDesc READ vbrModeDesc WRITE setVbrModeDesc NOTIFY vbrModeDescChanged)
    // 1 for any target but 0, whereas enableQualityTarget is true for target 1 alone: the choice has only two
    // sides, but quality controls are of use only where the target is known to be a quality.
    Q_PROPERTY(int selectedTag READ selectedTag WRITE setSelectedTag NOTIFY selectedTagChanged)
    Q_PROPERTY(bool enableQualityTarget READ enableQualityTarget NOTIFY enableQualityTargetChanged)

public:
    // Created by the first call, for the life of the process.
    static KTMP3ConfigureWndCtrl *shareConfigureWndCtrl();
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingSelectedTag();
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingEnableQualityTarget();

    explicit KTMP3ConfigureWndCtrl(const QString &windowNibName);

    // Opens the sheet on the window and returns at once; the window takes no input until the sheet is closed.
    // The window may go away at any time.
    void beginSheetForModalWindow(QWidget *mainWnd, const QSharedPointer<KTMp3LameConfig> &configure);

    QSharedPointer<KTMp3LameConfig> config() const { return m_config; }
    void setConfig(const QSharedPointer<KTMp3LameConfig> &config);
    double encodeQuality() const { return m_encodeQuality; }
    void setEncodeQuality(double encodeQuality);
    QString vbrModeDesc() const { return m_vbrModeDesc; }
    void setVbrModeDesc(const QString &vbrModeDesc);
    int selectedTag() const;
    void setSelectedTag(int tag);
    bool enableQualityTarget() const;

public Q_SLOTS:
    // Closes the sheet; does nothing when none is open.
    void okAction(QObject *sender = nullptr);

Q_SIGNALS:
    void configChanged();
    void encodeQualityChanged();
    void vbrModeDescChanged();
    void selectedTagChanged();
    void enableQualityTargetChanged();

protected:
    QWidget *loadWindow() override;

private:
    QPointer<QWidget> m_mainWnd;
    QSharedPointer<KTMp3LameConfig> m_config;
    double m_encodeQuality = 0;
    QString m_vbrModeDesc;
};
