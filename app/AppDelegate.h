// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioControl.h"
#include "app/FolderRequest.h"
#include "app/Problem.h"
#include "app/RecorderState.h"
#include "audio/HBPlayTask.h"
#include "audio/HBRecordingTask.h"

#include <QObject>
#include <QPointer>
#include <QUrl>
#include <functional>
#include <memory>

class HBPreferencesWndCtrl;
class QMenu;
class QWidget;

// Runs the user's commands: one small state machine for the whole application, from which the enabled and
// visible states of the main card's controls are derived. The controls are bound to its properties; it knows
// none of them but the three outlets. It owns the tasks, and lives as long as the process. Main thread only.
class AppDelegate : public QObject,
                    public HBRecordingTaskDelegate,
                    public HBPlayTaskDelegate,
                    public KTAudioControlDelegate {
    Q_OBJECT
    Q_PROPERTY(int state READ state WRITE setState NOTIFY stateChanged)
    Q_PROPERTY(std::shared_ptr<HBRecordingTask> recordingTask READ recordingTask WRITE setRecordingTask NOTIFY
            recordingTaskChanged)
    Q_PROPERTY(
        QUrl currentOutputURL READ currentOutputURL WRITE setCurrentOutputURL NOTIFY currentOutputURLChanged)
    Q_PROPERTY(QString lengthOfRecording READ lengthOfRecording WRITE setLengthOfRecording NOTIFY
            lengthOfRecordingChanged)
    Q_PROPERTY(QString currentDevice READ currentDevice WRITE setCurrentDevice NOTIFY currentDeviceChanged)
    Q_PROPERTY(bool showInFinderWhenFinishRecording READ showInFinderWhenFinishRecording WRITE
            setShowInFinderWhenFinishRecording NOTIFY showInFinderWhenFinishRecordingChanged)

    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

    Q_PROPERTY(bool canRecord READ canRecord NOTIFY canRecordChanged)
    Q_PROPERTY(bool canPause READ canPause NOTIFY canPauseChanged)
    Q_PROPERTY(bool canStop READ canStop NOTIFY canStopChanged)
    Q_PROPERTY(bool canPlay READ canPlay NOTIFY canPlayChanged)
    Q_PROPERTY(bool canShowPreferences READ canShowPreferences NOTIFY canShowPreferencesChanged)
    Q_PROPERTY(bool visibleShowInFinder READ visibleShowInFinder NOTIFY visibleShowInFinderChanged)
    Q_PROPERTY(bool visibleOutputFile READ visibleOutputFile NOTIFY visibleOutputFileChanged)
    Q_PROPERTY(QString currentOutputFile READ currentOutputFile NOTIFY currentOutputFileChanged)

public:
    explicit AppDelegate(QObject *parent = nullptr);
    // The tasks report to nobody from then on.
    ~AppDelegate() override;

    // Outlets, owned by the main card: the card itself, the menu of input devices, and the control that
    // anchors it.
    QPointer<QWidget> window;
    QPointer<QMenu> audioDeviceMenus;
    QPointer<QWidget> audioDeviceBox;

    // Life of the application.
    void applicationDidFinishLaunching();
    // Nothing is stopped and nothing is saved: every byte that was encoded is already in the file.
    void applicationWillTerminate() { }
    bool applicationShouldTerminateAfterLastWindowClosed() const { return true; }

    int state() const { return m_state; }
    void setState(int state);
    std::shared_ptr<HBRecordingTask> recordingTask() const { return m_recordingTask; }
    void setRecordingTask(std::shared_ptr<HBRecordingTask> task);
    QUrl currentOutputURL() const { return m_currentOutputURL; }
    void setCurrentOutputURL(const QUrl &url);
    QString lengthOfRecording() const { return m_lengthOfRecording; }
    void setLengthOfRecording(const QString &length);
    // The name of the device that the next recording will use; null when there is none.
    QString currentDevice() const { return m_currentDevice; }
    void setCurrentDevice(const QString &name);
    // Kept in the user's settings alone, where absent means yes.
    bool showInFinderWhenFinishRecording() const;
    void setShowInFinderWhenFinishRecording(bool show);

    // Why the last command could not be done, as a sentence. Empty when it could, and from the next command
    // on.
    QString problem() const { return m_problem.words; }
    // The same for scripts, which get it in English everywhere.
    QString problemInEnglish() const { return m_problem.inEnglish; }
    // The user is asked where recordings are to go, in a chooser that may be another program's.
    bool isChoosingFolder() const { return m_folderRequest.isOpen(); }

    bool canRecord() const { return m_state == RecorderStateIdle || m_state == RecorderStateRecordingPaused; }
    bool canPause() const { return m_state == RecorderStateRecording || m_state == RecorderStatePlaying; }
    bool canStop() const { return m_state != RecorderStateIdle; }
    bool canPlay() const;
    bool canShowPreferences() const;
    bool visibleShowInFinder() const;
    bool visibleOutputFile() const { return !m_currentOutputURL.isEmpty(); }
    QString currentOutputFile() const { return m_currentOutputURL.toLocalFile(); }

    // What each derived property is announced for. The reveal control follows the state alone: after a start
    // that failed it stays as it was until something really happens.
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingCanRecord() { return {QStringLiteral("state")}; }
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingCanPause() { return {QStringLiteral("state")}; }
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingCanStop() { return {QStringLiteral("state")}; }
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingCanPlay()
    {
        return {QStringLiteral("state"), QStringLiteral("currentOutputURL")};
    }
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingCanShowPreferences()
    {
        return {QStringLiteral("state")};
    }
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingVisibleShowInFinder()
    {
        return {QStringLiteral("state")};
    }
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingVisibleOutputFile()
    {
        return {QStringLiteral("currentOutputURL")};
    }
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingCurrentOutputFile()
    {
        return {QStringLiteral("currentOutputURL")};
    }

    // Created on first use, and one for all playbacks.
    HBPlayTask *playTask();
    HBPreferencesWndCtrl *preferencesWndCtrl() const;
    // Loads the preferences window, and with it the encoder configuration, when that has not happened yet.
    bool preferencesIsShow() const;

    // Commands. None looks at its sender.
    void recordAction(QObject *sender = nullptr);
    void pauseAction(QObject *sender = nullptr);
    void stopAction(QObject *sender = nullptr);
    void playAction(QObject *sender = nullptr);
    void showOutputInFinder(QObject *sender = nullptr);
    void changePreferencesAction(QObject *sender = nullptr);
    void getHelp(QObject *sender = nullptr);
    void setupWebsite() { }
    // Pops up the device menu at its box; returns when the menu has closed.
    void selAudioDevcieAction(QObject *sender = nullptr);
    // The action of every item of the device menu; any other sender is ignored.
    void devicesChanged(QObject *sender);

    // Fills the device menu anew and chooses the first device, whatever was chosen before.
    void setupAudioDevices();
    // The answer comes later, from the main loop, once.
    void grantedAudioDeviceAuthorizationWithCompleteHandler(std::function<void(bool granted)> completion);
    void alertAuthorizationAccessSetting();

    // "hh:mm:ss.t", cut off and never rounded; hours go on beyond two digits.
    static QString lengthFromDuration(qint64 milliseconds);

    void recordingTaskExcuteDuration(HBRecordingTask *task, qint64 milliseconds) override;
    void playTaskComplete(HBPlayTask *task) override;
    void audioControlInputDeviceChanged(KTAudioControl *control) override;
    void audioControlInputMuteChanged(KTAudioControl *control) override;

Q_SIGNALS:
    void stateChanged();
    void recordingTaskChanged();
    void currentOutputURLChanged();
    void lengthOfRecordingChanged();
    // Another piece of sound has been recorded, whether or not the length shows it yet.
    void recordingWentOn();
    void currentDeviceChanged();
    // Not by the user: devices have come or gone.
    void currentDeviceReplaced();
    // An input device may have been muted, or may be heard again.
    void inputMuteChanged();
    void showInFinderWhenFinishRecordingChanged();
    void problemChanged();
    void choosingFolderChanged();
    void canRecordChanged();
    void canPauseChanged();
    void canStopChanged();
    void canPlayChanged();
    void canShowPreferencesChanged();
    void visibleShowInFinderChanged();
    void visibleOutputFileChanged();
    void currentOutputFileChanged();

private:
    void recordWithAccess();
    void selectWorkingPathWithCompleteHandler(const std::function<void(bool chosen)> &completion);
    void startRecord(std::chrono::milliseconds patience);
    void setProblem(const Problem &problem);

    int m_state = RecorderStateIdle;
    std::shared_ptr<HBRecordingTask> m_recordingTask;
    QUrl m_currentOutputURL;
    QString m_lengthOfRecording;
    QString m_currentDevice;
    bool m_hasHadDevice = false;
    Problem m_problem;
    FolderRequest m_folderRequest;
    std::unique_ptr<HBPlayTask> m_playTask;
};
