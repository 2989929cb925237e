// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "encoder/KTMp3LameConfig.h"
#include "platform/DiskState.h"
#include "platform/Inquiry.h"
#include "platform/desktop/AttributedString.h"
#include "ui/WindowController.h"

#include <QUrl>
#include <memory>
#include <optional>

class QAbstractButton;
class QMenu;
class PreferencesCard;
class RecordingEstimate;
class WorkingFolder;

// The preferences card. For the whole application it also holds the encoder configuration in use and the
// working folder. The folder is stored when it is chosen; the configuration is read from the settings and
// never written: what is changed here is gone at the next launch. Main thread only.
class HBPreferencesWndCtrl : public WindowController {
    Q_OBJECT
    Q_PROPERTY(platform::AttributedString attributeTitleForDone READ attributeTitleForDone NOTIFY
            attributeTitlesChanged)
    Q_PROPERTY(platform::AttributedString attributeTitleForCBR READ attributeTitleForCBR NOTIFY
            attributeTitlesChanged)
    Q_PROPERTY(platform::AttributedString attributeTitleForQuality READ attributeTitleForQuality NOTIFY
            attributeTitlesChanged)
    Q_PROPERTY(platform::AttributedString attributeTitleForBitrate READ attributeTitleForBitrate NOTIFY
            attributeTitlesChanged)
    // An absolute path, or a sentence that asks for one; never empty.
    Q_PROPERTY(QString workingPath READ workingPath NOTIFY workingPathChanged)
    // Whether a folder or a file is at the path now, see WorkingFolder::isThere(). It asks the disk, so
    // nothing announces a change.
    Q_PROPERTY(bool workingPathExist READ workingPathExist NOTIFY workingPathExistChanged)
    // The path as the card shows it, which also says when the disk of the stored folder is waited for.
    Q_PROPERTY(QString workingFolderText READ workingFolderText NOTIFY workingFolderTextChanged)
    // Null until the window has been loaded.
    Q_PROPERTY(QSharedPointer<KTMp3LameConfig> config READ config WRITE setConfig NOTIFY configChanged)
    // What the configuration means for the disk that holds the working folder, as far as the disk has
    // answered; askForRoom() asks it.
    Q_PROPERTY(QString recordingEstimate READ recordingEstimate NOTIFY recordingEstimateChanged)

public:
    // Created by the first call, for the life of the process.
    static HBPreferencesWndCtrl *preferencesWndCtrl();
    // Declared for a key that the class does not have: whether there is something to show is asked for at the
    // moment it is to be shown.
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingCanShowInFinder();
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingRecordingEstimate();

    explicit HBPreferencesWndCtrl(const QString &windowNibName);
    ~HBPreferencesWndCtrl() override;

    // Where Done leads back to; null until the card has been turned over for the first time.
    QPointer<QWidget> mainWindow;

    // Outlets, null until the window has been loaded and owned by it: the menus of the encoder's choices, and
    // the controls under which they pop up.
    QPointer<QMenu> vbrModeMenu;
    QPointer<QWidget> boxVbrMode;
    QPointer<QMenu> encodeEngineMenu;
    QPointer<QWidget> boxEncoderEngine;
    // The switch of a setting that is not the controller's: whoever owns it binds it.
    QPointer<QAbstractButton> revealSwitch;

    // Built afresh on every read.
    platform::AttributedString attributeTitle(
        const QString &title, const QColor &color, Qt::Alignment alignment) const;
    // In the grey of labels, at the left.
    platform::AttributedString attributeTitle(const QString &title) const;
    platform::AttributedString attributeTitleForDone() const;
    platform::AttributedString attributeTitleForCBR() const;
    platform::AttributedString attributeTitleForQuality() const;
    platform::AttributedString attributeTitleForBitrate() const;

    QString workingPath() const;
    QString workingFolderText() const;
    bool workingPathExist() const;
    QSharedPointer<KTMp3LameConfig> config() const { return m_config; }
    void setConfig(const QSharedPointer<KTMp3LameConfig> &config);
    QString recordingEstimate() const;
    // Asks the disk anew and announces the estimate when its text changes. The disk is never waited for.
    void askForRoom();

    // The stored folder, if it can still be found.
    std::optional<QString> readWorkingPath() const;
    // Leaves the stored folder as it is when there is no folder at the address.
    void saveWorkingPathURL(const QUrl &url);
    // Stores the folder, and uses it from now on even when it could not be stored.
    void setWorkingPathWithURL(const QUrl &url);

public Q_SLOTS:
    // The menus return when they have closed.
    void popupEncodeEngineQuality(QObject *sender = nullptr);
    void popupVBRMode(QObject *sender = nullptr);
    // Only a menu item's title counts; any other sender is ignored.
    void encoderEngineQualityChanged(QObject *sender);
    void vbrModeChanged(QObject *sender);
    void selectWorkingPathAction(QObject *sender = nullptr);
    void showWorkingPathAction(QObject *sender = nullptr);
    // Back to the main window. Nothing is left to save.
    void doneAction(QObject *sender = nullptr);

Q_SIGNALS:
    // Never sent; a bound control only needs a signal to connect to.
    void attributeTitlesChanged();
    void workingPathExistChanged();
    void workingPathChanged();
    void workingFolderTextChanged();
    void configChanged();
    void recordingEstimateChanged();

protected:
    QWidget *loadWindow() override;
    void windowDidLoad() override;

private:
    void followFolder();
    QString roomSentence(const RecordingEstimate &estimate) const;

    void setDisk(const std::optional<platform::DiskState> &disk);

    const std::unique_ptr<WorkingFolder> m_folder;
    // Of the working folder. Nothing before the disk's first answer.
    std::optional<platform::DiskState> m_disk;
    platform::Inquiry<platform::DiskState> m_question;
    bool m_diskIsSilent = false;
    QSharedPointer<KTMp3LameConfig> m_config;
    QPointer<PreferencesCard> m_card;
};
