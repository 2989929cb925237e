// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/Troubles.h"

#include "platform/ForPeople.h"

using namespace std::chrono_literals;

namespace {

constexpr auto worthWaiting = 1s;

QString inMinutes(std::chrono::seconds time)
{
    const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(time).count();
    if (minutes < 1)
        return Troubles::tr("less than a minute");
    return minutes == 1 ? Troubles::tr("1 minute") : Troubles::tr("%n minutes", nullptr, int(minutes));
}

// Exact where a tenth can be heard: "0.4 s", "12 s", "3 min 20 s".
QString inSeconds(std::chrono::milliseconds time)
{
    if (time < 10s)
        return Troubles::tr("%1 s").arg(
            platform::localeOfNumbers().toString(double(time.count()) / 1000, 'f', 1));
    const auto seconds = std::chrono::round<std::chrono::seconds>(time).count();
    return seconds < 60 ? Troubles::tr("%1 s").arg(platform::localeOfNumbers().toString(seconds))
                        : Troubles::tr("%1 min %2 s")
                              .arg(platform::localeOfNumbers().toString(seconds / 60),
                                  platform::localeOfNumbers().toString(seconds % 60));
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

Troubles Troubles::withoutDurations() const
{
    Troubles shortest = *this;
    for (milliseconds *time : {&shortest.unwritten, &shortest.missing})
        *time = std::min(*time, worthTelling);
    shortest.waiting = std::min<milliseconds>(waiting, worthWaiting);
    shortest.timeLeft = std::min<std::chrono::seconds>(timeLeft, 1min);
    return shortest;
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
    return waiting < worthWaiting ? cause : tr("%1: %2 are safe in memory").arg(cause, inSeconds(waiting));
}
