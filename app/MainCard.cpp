// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/MainCard.h"

#include "app/AppDelegate.h"
#include "app/CardAccessibility.h"
#include "app/Herald.h"
#include "app/TakeHandle.h"
#include "app/WindowTitle.h"
#include "platform/Binding.h"
#include "ui/CardStyle.h"
#include "ui/IconButton.h"
#include "ui/TitleStrip.h"
#include "ui_MainWindow.h"

#include <QAccessible>
#include <QMenu>

using namespace Qt::StringLiterals;
using platform::bind;

namespace {

constexpr int footerHeight = 44; // points of the card

StatusLabel::Mark markOf(int state)
{
    switch (state) {
    case RecorderStateRecording:
        return StatusLabel::RecordingMark;
    case RecorderStatePlaying:
        return StatusLabel::PlayingMark;
    case RecorderStateRecordingPaused:
    case RecorderStatePlayingPaused:
        return StatusLabel::PausedMark;
    default:
        return StatusLabel::NoMark;
    }
}

} // namespace

MainCard::MainCard(AppDelegate *delegate)
    : CardWindow(MinimiseButton | CloseButton)
    , m_delegate(delegate)
    , m_ui(std::make_unique<Ui::MainWindow>())
    , m_deviceMenu(new QMenu(this))
    , m_focus(this)
{
    CardAccessibility::install();
    connect(delegate, &AppDelegate::stateChanged, this, &MainCard::followState);
    m_status = new StatusLine(delegate, &m_sound, this);
    m_ui->setupUi(content());
    setWindowTitle(content()->windowTitle());
    setAccessibleName(windowTitle()); // the title counts the seconds of a recording
    new WindowTitle(delegate, this);
    new Herald(delegate, m_status, this);
    new TakeHandle(delegate, m_ui->outputFile, m_ui->showButton);
    titleStrip()->addTool(m_ui->preferencesButton);
    titleStrip()->addTool(m_ui->helpButton);
    CardStyle::scaleLayout(content()->layout());
    // Empty before the first recording, but just as high.
    m_ui->footer->setFixedHeight(CardStyle::scaled(footerHeight));
    connectOutlets();
    bindControls();
    connectCommands();
    nameShortcuts();
    orderTabs();
    m_ui->recordButton->setFocus();
}

MainCard::~MainCard() = default;

// The meter shows what the watch hears; the status line asks the same watch.
void MainCard::followState()
{
    const bool records = m_delegate->state() == RecorderStateRecording;
    if (records)
        m_sound.start(m_delegate->recordingTask());
    else
        m_sound.stop();
    m_ui->levelMeter->setRunning(records);
    m_ui->recordButton->setLit(records);
    m_ui->elapsedTime->setLive(records || m_delegate->state() == RecorderStatePlaying);
    markStatus();
    if (!records)
        tellTime();
}

void MainCard::markStatus()
{
    m_ui->status->setMark(m_status->isWarning() ? StatusLabel::WarningMark : markOf(m_delegate->state()));
}

// Once it stands still. Whoever wants to know it while it runs asks.
void MainCard::tellTime()
{
    QAccessibleEvent changed(m_ui->elapsedTime, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&changed);
}

void MainCard::connectOutlets()
{
    m_delegate->window = this;
    m_delegate->audioDeviceMenus = m_deviceMenu;
    m_delegate->audioDeviceBox = m_ui->audioDeviceBox;
}

void MainCard::bindControls()
{
    bind(m_ui->elapsedTime, "text", m_delegate, u"lengthOfRecording"_s);
    bind(m_ui->audioDeviceBox, m_delegate, u"currentDevice"_s,
        [this](const QVariant &device) { showDevice(device.toString()); });
    bind(m_ui->outputFile, "text", m_delegate, u"currentOutputFile"_s);
    bindEnabled(m_ui->recordButton, u"canRecord"_s);
    bindEnabled(m_ui->pauseButton, u"canPause"_s);
    bindEnabled(m_ui->stopButton, u"canStop"_s);
    bindEnabled(m_ui->playButton, u"canPlay"_s);
    bindEnabled(m_ui->preferencesButton, u"canShowPreferences"_s);
    bindVisible(m_ui->showButton, u"visibleShowInFinder"_s);
    bindVisible(m_ui->outputFile, u"visibleOutputFile"_s);

    bind(m_ui->status, "text", m_status, u"text"_s);
    bind(m_ui->status, m_status, u"warning"_s, [this](const QVariant &) { markStatus(); });
    m_ui->levelMeter->setSource([this] { return m_sound.takePeaks(); });
    connect(m_delegate, &AppDelegate::recordingWentOn, m_ui->levelMeter, &LevelMeter::moveAlong);
}

// Letter for letter also for screen readers, which would otherwise be told the tool tip.
void MainCard::showDevice(const QString &device)
{
    const QString shown = device.isEmpty() ? tr("No input device") : device;
    m_ui->audioDeviceBox->setText(shown);
    m_ui->audioDeviceBox->setAccessibleDescription(shown);
}

void MainCard::connectCommands()
{
    command(m_ui->recordButton, &AppDelegate::recordAction);
    command(m_ui->pauseButton, &AppDelegate::pauseAction);
    command(m_ui->stopButton, &AppDelegate::stopAction);
    command(m_ui->playButton, &AppDelegate::playAction);
    command(m_ui->showButton, &AppDelegate::showOutputInFinder);
    command(m_ui->preferencesButton, &AppDelegate::changePreferencesAction);
    command(m_ui->helpButton, &AppDelegate::getHelp);
    command(m_ui->audioDeviceBox, &AppDelegate::selAudioDevcieAction);
}

// A tool tip names the control and its key. Closing the card quits the program.
void MainCard::nameShortcuts()
{
    titleStrip()->closeButton()->setShortcut(QKeySequence::Quit);
    const auto buttons = findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons) {
        const QString key = button->shortcut().toString(QKeySequence::NativeText);
        if (!key.isEmpty())
            button->setToolTip(tr("%1 (%2)", "a command and its key").arg(button->accessibleName(), key));
    }
}

// In the order in which the eye reads the card. The interface file does not know the buttons of the window.
void MainCard::orderTabs()
{
    const QList<QWidget *> order{m_ui->preferencesButton, m_ui->helpButton, titleStrip()->minimiseButton(),
        titleStrip()->closeButton(), m_ui->audioDeviceBox, m_ui->playButton, m_ui->recordButton,
        m_ui->pauseButton, m_ui->stopButton, m_ui->showButton};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void MainCard::bindEnabled(QWidget *control, const QString &keyPath)
{
    bind(control, m_delegate, keyPath,
        [this, control](const QVariant &enabled) { m_focus.setEnabled(control, enabled.toBool()); });
}

void MainCard::bindVisible(QWidget *control, const QString &keyPath)
{
    bind(control, m_delegate, keyPath,
        [this, control](const QVariant &visible) { m_focus.setVisible(control, visible.toBool()); });
}

void MainCard::command(QAbstractButton *button, void (AppDelegate::*action)(QObject *))
{
    connect(button, &QAbstractButton::clicked, m_delegate,
        [this, button, action] { (m_delegate->*action)(button); });
}
