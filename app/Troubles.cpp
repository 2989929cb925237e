// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/Troubles.h"

#include <QCoreApplication>

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

} // namespace

QString Troubles::sentence(const QString &device) const
{
    using Disk = DiskWatch::Judgement;
    using Sound = SoundWatch::Judgement;
    if (diskIsSilent)
        return tr("The disk does not answer");
    if (disk == Disk::FolderGone)
        return tr("The folder is gone");
    if (disk == Disk::FileGone)
        return tr("The file is gone");
    if (disk == Disk::Full)
        return tr("The disk is full");
    if (sound == Sound::NothingArrives)
        return tr("No sound is arriving from %1").arg(device);
    if (disk == Disk::NotWritten)
        return tr("The file cannot be written");
    if (disk == Disk::NearlyFull)
        return tr("The disk is nearly full: %1 left").arg(inMinutes(timeLeft));
    if (sound == Sound::OnlySilence)
        return tr("Only silence from %1").arg(device);
    return {};
}
