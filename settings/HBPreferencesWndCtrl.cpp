// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/HBPreferencesWndCtrl.h"

#include "platform/Bookmark.h"
#include "platform/KeyPath.h"
#include "platform/ThreadCheck.h"
#include "platform/UserDefaults.h"
#include "platform/desktop/FileManager.h"
#include "platform/desktop/FolderChooser.h"
#include "platform/desktop/PopUpMenu.h"
#include "settings/EncoderForm.h"
#include "settings/PreferencesCard.h"
#include "settings/RecordingEstimate.h"
#include "ui/flip/NSWindow_Flipr.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {

const QString configDataKey = u"HBConfigDataKey"_s;
const QString workingPathKey = u"HBWorkingPathKey"_s;
const QString noWorkingPath = u"Please select a location to save the recording"_s;
constexpr QColor labelGrey(164, 173, 178);
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
    , m_workingPath(storedWorkingPath())
{
    platform::announceDerivedProperties(this);
}

HBPreferencesWndCtrl::~HBPreferencesWndCtrl() = default;

platform::AttributedString HBPreferencesWndCtrl::attributeTitle(
    const QString &title, const QColor &color, Qt::Alignment alignment) const
{
    return {title, color, alignment, 13.0};
}

platform::AttributedString HBPreferencesWndCtrl::attributeTitle(const QString &title) const
{
    return attributeTitle(title, labelGrey, Qt::AlignLeft);
}

platform::AttributedString HBPreferencesWndCtrl::attributeTitleForDone() const
{
    return attributeTitle(u"Done"_s, Qt::white, Qt::AlignHCenter);
}

platform::AttributedString HBPreferencesWndCtrl::attributeTitleForCBR() const
{
    return attributeTitle(u"Restrict encoder to constant bitrate"_s);
}

platform::AttributedString HBPreferencesWndCtrl::attributeTitleForQuality() const
{
    return attributeTitle(u"Quality"_s);
}

platform::AttributedString HBPreferencesWndCtrl::attributeTitleForBitrate() const
{
    return attributeTitle(u"Bitrate"_s);
}

bool HBPreferencesWndCtrl::workingPathExist() const
{
    // The sentence that stands in for a path must not be looked for in the current folder.
    return QDir::isAbsolutePath(m_workingPath) && QFileInfo::exists(m_workingPath);
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
    return estimate.rateSentence() + roomSentence(estimate);
}

QString HBPreferencesWndCtrl::roomSentence(const RecordingEstimate &estimate) const
{
    if (m_workingPath == noWorkingPath || !m_disk)
        return {};
    switch (m_disk->folder) {
    case platform::DiskState::Missing:
        return u" The folder is gone."_s;
    case platform::DiskState::NotAFolder:
        return u" This is not a folder."_s;
    case platform::DiskState::NotWritable:
        return u" The folder is not writable."_s;
    case platform::DiskState::Writable:
        break;
    }
    return u' ' + estimate.roomSentence(m_disk->bytesFree);
}

void HBPreferencesWndCtrl::askForRoom()
{
    // A disk that does not answer is not asked again and again.
    if (m_workingPath == noWorkingPath || m_question.isPending())
        return;
    m_question.ask(platform::questionToDisk(m_workingPath), diskAnswersWithin, platform::LateAnswer::Adopted,
        [this](const std::optional<platform::DiskState> &disk) {
            if (disk)
                setDisk(*disk);
        });
}

void HBPreferencesWndCtrl::setDisk(const platform::DiskState &disk)
{
    const QString before = recordingEstimate();
    m_disk = disk;
    if (recordingEstimate() != before)
        Q_EMIT recordingEstimateChanged();
}

std::optional<QString> HBPreferencesWndCtrl::readWorkingPath() const
{
    const QByteArray bookmark = platform::UserDefaults::standardUserDefaults().dataForKey(workingPathKey);
    const auto folder = platform::folderForBookmarkData(bookmark);
    return folder ? std::optional(folder->toLocalFile()) : std::nullopt;
}

void HBPreferencesWndCtrl::saveWorkingPathURL(const QUrl &url)
{
    const QByteArray bookmark = platform::bookmarkDataForFolder(url);
    if (!bookmark.isEmpty())
        platform::UserDefaults::standardUserDefaults().setData(bookmark, workingPathKey);
}

void HBPreferencesWndCtrl::setWorkingPathWithURL(const QUrl &url)
{
    const QUrl folder = url.adjusted(QUrl::StripTrailingSlash);
    saveWorkingPathURL(folder);
    setWorkingPath(folder.toLocalFile());
}

void HBPreferencesWndCtrl::setWorkingPath(const QString &path)
{
    if (m_workingPath == path)
        return;
    m_workingPath = path;
    m_disk.reset();
    m_question.cancel();
    if (m_card && m_card->isVisible())
        askForRoom();
    Q_EMIT workingPathChanged();
}

QString HBPreferencesWndCtrl::storedWorkingPath() const
{
    return readWorkingPath().value_or(noWorkingPath);
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
    setWorkingPath(storedWorkingPath());
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
    platform::chooseFolder(window(), [controller = QPointer(this)](const std::optional<QUrl> &folder) {
        if (controller && folder)
            controller->setWorkingPathWithURL(*folder);
    });
}

void HBPreferencesWndCtrl::showWorkingPathAction(QObject *)
{
    if (workingPathExist())
        platform::revealInFileManager(QUrl::fromLocalFile(m_workingPath));
}

void HBPreferencesWndCtrl::doneAction(QObject *)
{
    if (mainWindow)
        NSWindow_Flipr::flipToShowWindow(window(), mainWindow, false);
}
