// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/AppDelegate.h"

#include "app/Alerts.h"
#include "app/Takes.h"
#include "audio/MicrophoneAuthorization.h"
#include "audio/desktop/InputDeviceMenu.h"
#include "platform/ForPeople.h"
#include "platform/KeyPath.h"
#include "platform/Logging.h"
#include "platform/MainQueue.h"
#include "platform/OutputState.h"
#include "platform/ThreadCheck.h"
#include "platform/UserDefaults.h"
#include "platform/desktop/FileManager.h"
#include "platform/desktop/Foreground.h"
#include "platform/desktop/Opener.h"
#include "platform/desktop/PopUpMenu.h"
#include "settings/HBPreferencesWndCtrl.h"
#include "ui/flip/NSWindow_Flipr.h"

#include <QAction>
#include <QElapsedTimer>
#include <QMenu>
#include <cerrno>

using namespace Qt::StringLiterals;
using platform::UserDefaults;

namespace {

const QString showInFinderKey = u"showInFinderWhenFinishRecording"_s;

// Folder, device and file together: the window waits for a start, but not for a whole second.
constexpr std::chrono::milliseconds longestStart{850};

} // namespace

AppDelegate::AppDelegate(QObject *parent)
    : QObject(parent)
{
    platform::announceDerivedProperties(this);
    connect(&m_folderRequest, &FolderRequest::isOpenChanged, this, &AppDelegate::choosingFolderChanged);
}

AppDelegate::~AppDelegate()
{
    KTAudioControl::sharedAudioControl()->setDelegate(nullptr);
    if (m_recordingTask)
        m_recordingTask->setDelegate(nullptr);
    if (m_playTask)
        m_playTask->setDelegate(nullptr);
}

// Life of the application

void AppDelegate::applicationDidFinishLaunching()
{
    KTAudioControl::sharedAudioControl()->setDelegate(this);
    setupAudioDevices();
    m_hasHadDevice = !m_currentDevice.isEmpty();
    setLengthOfRecording(u"00:00:00.0"_s);
}

HBPlayTask *AppDelegate::playTask()
{
    if (!m_playTask)
        m_playTask = std::make_unique<HBPlayTask>(this);
    return m_playTask.get();
}

HBPreferencesWndCtrl *AppDelegate::preferencesWndCtrl() const
{
    return HBPreferencesWndCtrl::preferencesWndCtrl();
}

bool AppDelegate::preferencesIsShow() const
{
    return preferencesWndCtrl()->window()->isVisible();
}

void AppDelegate::changePreferencesAction(QObject *)
{
    QWidget *preferences = preferencesWndCtrl()->window();
    if (preferences->isVisible()) {
        platform::bringToFront(preferences->window());
    } else {
        preferencesWndCtrl()->mainWindow = window;
        NSWindow_Flipr::flipToShowWindow(window, preferences, true);
    }
}

void AppDelegate::getHelp(QObject *)
{
    platform::Opener::shared().open(QUrl(u"https://flipside.example.org/contact"_s));
}

// Stored properties

void AppDelegate::setState(int state)
{
    platform::assertMainThread();
    if (m_state == state)
        return;
    m_state = state;
    Q_EMIT stateChanged();
}

void AppDelegate::setRecordingTask(std::shared_ptr<HBRecordingTask> task)
{
    if (m_recordingTask == task)
        return;
    m_recordingTask.swap(task);
    // The one before may still be encoding; the time that is shown is no longer its own.
    if (task)
        task->setDelegate(nullptr);
    Q_EMIT recordingTaskChanged();
}

void AppDelegate::setCurrentOutputURL(const QUrl &url)
{
    if (m_currentOutputURL == url)
        return;
    m_currentOutputURL = url;
    Q_EMIT currentOutputURLChanged();
}

void AppDelegate::setLengthOfRecording(const QString &length)
{
    if (m_lengthOfRecording == length)
        return;
    m_lengthOfRecording = length;
    Q_EMIT lengthOfRecordingChanged();
}

void AppDelegate::setCurrentDevice(const QString &name)
{
    if (m_currentDevice == name && m_currentDevice.isNull() == name.isNull())
        return;
    m_currentDevice = name;
    Q_EMIT currentDeviceChanged();
}

void AppDelegate::setProblem(const Problem &problem)
{
    const bool changes = m_problem.words != problem.words;
    m_problem = problem;
    if (changes)
        Q_EMIT problemChanged();
}

bool AppDelegate::showInFinderWhenFinishRecording() const
{
    return UserDefaults::standardUserDefaults().boolForKey(showInFinderKey).value_or(true);
}

void AppDelegate::setShowInFinderWhenFinishRecording(bool show)
{
    const bool changes = show != showInFinderWhenFinishRecording();
    UserDefaults::standardUserDefaults().setBool(show, showInFinderKey);
    UserDefaults::standardUserDefaults().synchronize();
    if (changes)
        Q_EMIT showInFinderWhenFinishRecordingChanged();
}

// Derived properties

bool AppDelegate::canPlay() const
{
    return (m_state == RecorderStateIdle || m_state == RecorderStatePlayingPaused)
        && !m_currentOutputURL.isEmpty();
}

bool AppDelegate::canShowPreferences() const
{
    return m_state == RecorderStateIdle || isPlaying(m_state);
}

bool AppDelegate::visibleShowInFinder() const
{
    return !isRecording(m_state) && !m_currentOutputURL.isEmpty();
}

// Record

void AppDelegate::recordAction(QObject *)
{
    setProblem({});
    grantedAudioDeviceAuthorizationWithCompleteHandler([self = QPointer(this)](bool granted) {
        if (!self)
            return;
        if (granted)
            self->recordWithAccess();
        else
            self->alertAuthorizationAccessSetting();
    });
}

// The state is read here: of two quick presses the second finds the recording that the first has started.
// While a folder is asked for, nothing starts: the recording of the answer would cut it off.
void AppDelegate::recordWithAccess()
{
    QElapsedTimer looking;
    looking.start();
    if (m_state == RecorderStateRecordingPaused) {
        if (m_recordingTask)
            m_recordingTask->resumeRecord();
        setState(RecorderStateRecording);
    } else if (m_state != RecorderStateIdle) {
        qCWarning(lcApp, "Current state can not start record.");
    } else if (!m_folderRequest.isOpen() && preferencesWndCtrl()->workingPathExist()) {
        startRecord(longestStart - std::chrono::milliseconds(looking.elapsed()));
    } else {
        selectWorkingPathWithCompleteHandler([self = QPointer(this)](bool chosen) {
            if (!chosen)
                return;
            platform::postToMainQueue([self] {
                if (self)
                    self->startRecord(longestStart);
            });
        });
    }
}

void AppDelegate::selectWorkingPathWithCompleteHandler(const std::function<void(bool chosen)> &completion)
{
    const bool isAsked = m_folderRequest.ask(window, tr("Choose a folder for your recordings"),
        [self = QPointer(this), completion](const std::optional<QUrl> &folder) {
            if (self && folder)
                self->preferencesWndCtrl()->setWorkingPathWithURL(*folder);
            completion(folder.has_value());
        });
    if (!isAsked)
        setProblem(Problem::cannotRecord(
            platform::reason(QT_TRANSLATE_NOOP("Reason", "a folder is being chosen already"))));
}

void AppDelegate::startRecord(std::chrono::milliseconds patience)
{
    if (!Takes::canOpenAnother()) {
        qCWarning(lcApp, "Too many files are open to start a recording.");
        setProblem(Problem::cannotRecord(platform::outputErrorReason(EMFILE)));
        return;
    }
    // The file is named at once: it is the current one also when nothing can be written to it.
    setCurrentOutputURL(Takes::createUniquePathFile(preferencesWndCtrl()->workingPath()));
    const auto deviceID = KTAudioControl::sharedAudioControl()->deviceIDFromName(m_currentDevice);
    // The configuration comes with the preferences window. The card has it loaded right after its first
    // paint; a Record that is faster than that loads it here.
    preferencesWndCtrl()->window();
    const auto task
        = std::make_shared<HBRecordingTask>(deviceID, preferencesWndCtrl()->config(), m_currentOutputURL);
    setRecordingTask(task);
    task->setDelegate(this);
    if (task->startRecord(QDeadlineTimer(patience))) {
        Alerts::dismiss();
        // Begun while the folder was chosen: with its end the recording would count as ended, too.
        if (isPlaying(m_state))
            playTask()->stop();
        setState(RecorderStateRecording);
    } else {
        setProblem(Problem::cannotRecord(Takes::whyNotStarted(*task)));
        // Where only the file was refused the microphone is open, and the alert may stay up all night. A
        // server that is slow to close it does not hold up the alert.
        QTimer::singleShot(0, this, [task] { task->stopRecord(); });
        Alerts::failedStartRecording(task->audioStreamBaseDescription());
        // While the alert was up, another attempt may have become the recording.
        if (m_recordingTask == task)
            setRecordingTask(nullptr);
    }
}

// Pause, Stop, Play

void AppDelegate::pauseAction(QObject *)
{
    setProblem({});
    if (m_state == RecorderStateRecording) {
        if (m_recordingTask)
            m_recordingTask->pauseRecord();
        setState(RecorderStateRecordingPaused);
    } else if (m_state == RecorderStatePlaying) {
        playTask()->pause();
        setState(RecorderStatePlayingPaused);
    } else {
        qCWarning(lcApp, "Current state can not pause");
    }
}

void AppDelegate::stopAction(QObject *)
{
    setProblem({});
    if (isPlaying(m_state)) {
        playTask()->stop();
        setState(RecorderStateIdle);
    } else if (isRecording(m_state)) {
        if (m_recordingTask)
            m_recordingTask->stopRecord();
        setState(RecorderStateIdle);
        if (showInFinderWhenFinishRecording())
            showOutputInFinder();
    } else {
        qCWarning(lcApp, "Current state can not stop");
    }
}

void AppDelegate::playAction(QObject *)
{
    setProblem({});
    if (m_state == RecorderStatePlayingPaused) {
        playTask()->resume();
        setState(RecorderStatePlaying);
    } else if (m_state != RecorderStateIdle) {
        qCWarning(lcApp, "Current state can not play.");
    } else if (m_currentOutputURL.isEmpty()) {
        qCWarning(lcApp, "Output url not exist.");
    } else {
        playTask()->playWithURL(m_currentOutputURL);
        setState(RecorderStatePlaying);
    }
}

void AppDelegate::showOutputInFinder(QObject *)
{
    if (!m_currentOutputURL.isEmpty())
        platform::revealInFileManager(m_currentOutputURL);
}

// Input devices and authorization

void AppDelegate::setupAudioDevices()
{
    platform::assertMainThread();
    const auto chosen = [this](QAction *item) { devicesChanged(item); };
    if (audioDeviceMenus)
        InputDeviceMenu::rebuild(
            audioDeviceMenus, KTAudioControl::sharedAudioControl()->inputDevicesName(), chosen);
    setCurrentDevice(KTAudioControl::sharedAudioControl()->inputDevicesName().value(0));
}

void AppDelegate::devicesChanged(QObject *sender)
{
    if (auto *item = qobject_cast<QAction *>(sender))
        setCurrentDevice(InputDeviceMenu::title(item));
}

void AppDelegate::selAudioDevcieAction(QObject *)
{
    platform::popUpMenu(audioDeviceMenus, audioDeviceBox);
}

void AppDelegate::grantedAudioDeviceAuthorizationWithCompleteHandler(
    std::function<void(bool granted)> completion)
{
    requestMicrophoneAuthorization(std::move(completion));
}

void AppDelegate::alertAuthorizationAccessSetting()
{
    Alerts::authorizationAccessSetting();
}

// Reports

QString AppDelegate::lengthFromDuration(qint64 milliseconds)
{
    const qint64 seconds = milliseconds / 1000;
    return QString::asprintf("%02d:%02d:%02d.%01d", int(milliseconds / 3600000), int(seconds % 3600 / 60),
        int(seconds % 3600 % 60), int(milliseconds % 1000 / 100));
}

void AppDelegate::recordingTaskExcuteDuration(HBRecordingTask *, qint64 milliseconds)
{
    platform::assertMainThread();
    setLengthOfRecording(lengthFromDuration(milliseconds));
    Q_EMIT recordingWentOn();
}

void AppDelegate::playTaskComplete(HBPlayTask *task)
{
    if (!task->problem().isEmpty())
        setProblem(Problem::cannotPlay(m_currentOutputURL.fileName(), task->problem()));
    setState(RecorderStateIdle);
}

void AppDelegate::audioControlInputDeviceChanged(KTAudioControl *)
{
    const QString before = m_currentDevice;
    setupAudioDevices();
    if (m_hasHadDevice && m_currentDevice != before)
        Q_EMIT currentDeviceReplaced();
    m_hasHadDevice |= !m_currentDevice.isEmpty();
}

void AppDelegate::audioControlInputMuteChanged(KTAudioControl *)
{
    Q_EMIT inputMuteChanged();
}
