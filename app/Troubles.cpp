// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/Troubles.h"

#include <QCoreApplication>

using namespace std::chrono_literals;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("StatusLine", text);
}

QString inMinutes(std::chrono::seconds time)
{
    const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(time).count();
    if (minutes < 1)
        return tr("less than a minute");
    return minutes == 1 ? tr("1 minute") : tr("%1 minutes").arg(minutes);
}

// Exact where a tenth can be heard: "0.4 s", "12 s", "3 min 20 s".
QString inSeconds(std::chrono::milliseconds time)
{
    if (time < 10s)
        return tr("%1 s").arg(double(time.count()) / 1000, 0, 'f', 1);
    const auto seconds = std::chrono::round<std::chrono::seconds>(time).count();
    return seconds < 60 ? tr("%1 s").arg(seconds) : tr("%1 min %2 s").arg(seconds / 60).arg(seconds % 60);
}

QString asSentence(const QString &reason)
{
    return reason.left(1).toUpper() + reason.mid(1);
}

} // namespace

QString Troubles::sentence(const QString &device) const
{
    for (const QString &told : {ofTheFile(), ofTheSound(device), ofHoles()})
        if (!told.isEmpty())
            return told;
    return {};
}

QString Troubles::ofTheFile() const
{
    using Disk = DiskWatch::Judgement;
    if (unwritten >= worthTelling)
        return tr("%1 could not be written: %2")
            .arg(inSeconds(unwritten), diskProblem.isEmpty() ? tr("the disk was too slow") : diskProblem);
    if (!diskProblem.isEmpty())
        return andWaiting(asSentence(diskProblem));
    if (diskIsSilent)
        return andWaiting(tr("The disk does not answer"));
    if (disk == Disk::FolderGone)
        return tr("The folder is gone");
    if (disk == Disk::FileGone)
        return tr("The file is gone");
    return disk == Disk::Full ? andWaiting(tr("The disk is full")) : QString();
}

QString Troubles::ofTheSound(const QString &device) const
{
    using Disk = DiskWatch::Judgement;
    using Sound = SoundWatch::Judgement;
    if (sound == Sound::NothingArrives)
        return tr("No sound is arriving from %1").arg(device);
    if (disk == Disk::NotWritten)
        return tr("The file cannot be written");
    if (muted)
        return tr("%1 is muted").arg(device);
    if (disk == Disk::NearlyFull)
        return tr("The disk is nearly full: %1 left").arg(inMinutes(timeLeft));
    return sound == Sound::OnlySilence ? tr("Only silence from %1").arg(device) : QString();
}

QString Troubles::ofHoles() const
{
    return missing >= worthTelling ? tr("%1 are missing: %2").arg(inSeconds(missing), missingBecause)
                                   : QString();
}

QString Troubles::andWaiting(const QString &cause) const
{
    return waiting < 1s ? cause : tr("%1: %2 wait in memory and are safe").arg(cause, inSeconds(waiting));
}
