// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/HBPreferencesWndCtrl.h"

#include "platform/KeyPath.h"
#include "platform/ThreadCheck.h"
#include "platform/UserDefaults.h"
#include "platform/desktop/FileManager.h"
#include "platform/desktop/FolderChooser.h"
#include "platform/desktop/PopUpMenu.h"
#include "settings/EncoderForm.h"
#include "settings/PreferencesCard.h"
#include "settings/RecordingEstimate.h"
#include "settings/WorkingFolder.h"
#include "ui/CardStyle.h"
#include "ui/flip/NSWindow_Flipr.h"

#include <QAction>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {

const QString configDataKey = u"HBConfigDataKey"_s;
// English where it stands for a path, translated where it is shown.
constexpr const char *noWorkingPath
    = QT_TRANSLATE_NOOP("HBPreferencesWndCtrl", "Please select a location to save the recording");
constexpr std::chrono::seconds diskAnswersWithin(1);

// An archive that holds no configuration counts as none; the decoder has logged why.
QSharedPointer<KTMp3LameConfig> storedConfig()
{
    const QByteArray archive = platform::UserDefaults::standardUserDefaults().dataForKey(configDataKey);
    const auto config
        = archive.isEmpty() ? QSharedPointer<KTMp3LameConfig>() : KTMp3LameConfig::unarchivedConfig(archive);
    return config ? config : QSharedPointer<KTMp3LameConfig>::create();
}

} // namespace

HBPreferencesWndCtrl *HBPreferencesWndCtrl::preferencesWndCtrl()
{
    platform::assertMainThread();
    // Never destroyed: windows must not outlive the application object, which dies before statics do.
    static auto *const shared = new HBPreferencesWndCtrl(u"HBPreferencesWndCtrl"_s);
    return shared;
}

QStringList HBPreferencesWndCtrl::keyPathsForValuesAffectingCanShowInFinder()
{
    return {u"workingPath"_s};
}

QStringList HBPreferencesWndCtrl::keyPathsForValuesAffectingRecordingEstimate()
{
    return {u"config.encoderTarget"_s, u"config.isCBR"_s, u"config.encodeQuality"_s, u"workingPath"_s};
}

HBPreferencesWndCtrl::HBPreferencesWndCtrl(const QString &windowNibName)
    : WindowController(windowNibName)
    , m_folder(std::make_unique<WorkingFolder>())
{
    platform::announceDerivedProperties(this);
    connect(m_folder.get(), &WorkingFolder::pathChanged, this, &HBPreferencesWndCtrl::followFolder);
    connect(m_folder.get(), &WorkingFolder::waitingForChanged, this,
        &HBPreferencesWndCtrl::workingFolderTextChanged);
    m_folder->restore();
}

HBPreferencesWndCtrl::~HBPreferencesWndCtrl() = default;

platform::AttributedString HBPreferencesWndCtrl::attributeTitle(
    const QString &title, const QColor &color, Qt::Alignment alignment) const
{
    return {title, color, alignment, 13.0};
}

platform::AttributedString HBPreferencesWndCtrl::attributeTitle(const QString &title) const
{
    return attributeTitle(title, CardStyle::labelGrey, Qt::AlignLeft);
}

platform::AttributedString HBPreferencesWndCtrl::attributeTitleForDone() const
{
    return attributeTitle(tr("Done"), Qt::white, Qt::AlignHCenter);
}

platform::AttributedString HBPreferencesWndCtrl::attributeTitleForCBR() const
{
    return attributeTitle(tr("Restrict encoder to constant bitrate"));
}

platform::AttributedString HBPreferencesWndCtrl::attributeTitleForQuality() const
{
    return attributeTitle(tr("Quality"));
}

platform::AttributedString HBPreferencesWndCtrl::attributeTitleForBitrate() const
{
    return attributeTitle(tr("Bitrate"));
}

QString HBPreferencesWndCtrl::workingPath() const
{
    return m_folder->path().isEmpty() ? QString::fromLatin1(noWorkingPath) : m_folder->path();
}

QString HBPreferencesWndCtrl::workingFolderText() const
{
    const QString waitingFor = m_folder->waitingFor();
    if (!waitingFor.isEmpty())
        return tr("Waiting for the disk of %1").arg(waitingFor);
    return m_folder->path().isEmpty() ? tr(noWorkingPath) : m_folder->path();
}

bool HBPreferencesWndCtrl::workingPathExist() const
{
    return m_folder->isThere();
}

void HBPreferencesWndCtrl::setConfig(const QSharedPointer<KTMp3LameConfig> &config)
{
    if (m_config == config)
        return;
    m_config = config;
    Q_EMIT configChanged();
}

QString HBPreferencesWndCtrl::recordingEstimate() const
{
    if (!m_config)
        return {};
    const RecordingEstimate estimate(*m_config);
    const QString room = roomSentence(estimate);
    return room.isEmpty() ? estimate.rateSentence()
                          : tr("%1 %2", "two sentences").arg(estimate.rateSentence(), room);
}

QString HBPreferencesWndCtrl::roomSentence(const RecordingEstimate &estimate) const
{
    if (m_diskIsSilent)
        return tr("Waiting for the disk."); // the card names its folder above
    if (!m_disk)
        return {};
    switch (m_disk->folder) {
    case platform::DiskState::Missing:
        return tr("The folder is gone.");
    case platform::DiskState::NotAFolder:
        return tr("This is not a folder.");
    case platform::DiskState::NotWritable:
        return tr("The folder is not writable.");
    case platform::DiskState::Writable:
    case platform::DiskState::Unknown:
        break;
    }
    return m_disk->bytesFree ? estimate.roomSentence(*m_disk->bytesFree) : QString();
}

void HBPreferencesWndCtrl::askForRoom()
{
    // A disk that does not answer is not asked again and again.
    if (m_folder->path().isEmpty() || m_question.isPending())
        return;
    m_question.ask(platform::questionToDisk(m_folder->path()), diskAnswersWithin,
        platform::LateAnswer::Adopted,
        [this](const std::optional<platform::DiskState> &disk) { setDisk(disk); });
}

void HBPreferencesWndCtrl::setDisk(const std::optional<platform::DiskState> &disk)
{
    const QString before = recordingEstimate();
    m_disk = disk;
    m_diskIsSilent = !disk;
    if (recordingEstimate() != before)
        Q_EMIT recordingEstimateChanged();
}

std::optional<QString> HBPreferencesWndCtrl::readWorkingPath() const
{
    return WorkingFolder::stored();
}

void HBPreferencesWndCtrl::saveWorkingPathURL(const QUrl &url)
{
    m_folder->store(url);
}

void HBPreferencesWndCtrl::setWorkingPathWithURL(const QUrl &url)
{
    const QUrl folder = url.adjusted(QUrl::StripTrailingSlash);
    saveWorkingPathURL(folder);
    m_folder->use(folder);
}

void HBPreferencesWndCtrl::followFolder()
{
    m_disk.reset();
    m_diskIsSilent = false;
    m_question.cancel();
    if (m_card)
        askForRoom();
    Q_EMIT workingPathChanged();
    Q_EMIT workingFolderTextChanged();
}

QWidget *HBPreferencesWndCtrl::loadWindow()
{
    m_card = new PreferencesCard(this);
    return m_card;
}

void HBPreferencesWndCtrl::windowDidLoad()
{
    if (!m_config)
        setConfig(storedConfig());
    m_folder->restore();
    // So that the estimate is on the card already when it turns up for the first time.
    askForRoom();
}

void HBPreferencesWndCtrl::popupEncodeEngineQuality(QObject *)
{
    platform::popUpMenu(encodeEngineMenu, boxEncoderEngine);
}

void HBPreferencesWndCtrl::popupVBRMode(QObject *)
{
    platform::popUpMenu(vbrModeMenu, boxVbrMode);
}

void HBPreferencesWndCtrl::encoderEngineQualityChanged(QObject *sender)
{
    const auto *item = qobject_cast<QAction *>(sender);
    if (item && m_config)
        m_config->setEncoderEngineQualityName(EncoderForm::titleOf(*item));
}

void HBPreferencesWndCtrl::vbrModeChanged(QObject *sender)
{
    const auto *item = qobject_cast<QAction *>(sender);
    if (item && m_config)
        m_config->setVbrModeName(EncoderForm::titleOf(*item));
}

void HBPreferencesWndCtrl::selectWorkingPathAction(QObject *)
{
    const platform::FolderQuestion question{tr("Choose a folder for your recordings"), workingPath()};
    platform::chooseFolder(
        window(), question, [controller = QPointer(this)](const std::optional<QUrl> &folder) {
            if (controller && folder)
                controller->setWorkingPathWithURL(*folder);
        });
}

void HBPreferencesWndCtrl::showWorkingPathAction(QObject *)
{
    if (workingPathExist())
        platform::revealInFileManager(QUrl::fromLocalFile(m_folder->path()));
}

void HBPreferencesWndCtrl::doneAction(QObject *)
{
    if (mainWindow)
        NSWindow_Flipr::flipToShowWindow(window(), mainWindow, false);
}
