// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/DiskWatch.h"
#include "app/SoundWatch.h"
#include "app/Troubles.h"
#include "platform/Inquiry.h"

#include <QBasicTimer>
#include <QObject>

class AppDelegate;

// The one honest line: what the recorder is doing, from which device, and what is wrong when something is.
// What the last recording lacks is said until the next one, and why a command could not be done until the
// next command, unless something else is in the way of the next recording; so is what nothing opens, unless
// there is anything else to tell. It only looks: it changes no state and shows no dialog. While nothing is
// recorded, nothing waits for a disk, and no file is missed, it does not wake up at all. Main thread only.
class StatusLine : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString text READ text NOTIFY textChanged)
    // The text says that something is wrong.
    Q_PROPERTY(bool warning READ isWarning NOTIFY warningChanged)

public:
    // Both outlive it. Whoever starts and stops the watch hears of a change of state before this does.
    StatusLine(AppDelegate *delegate, SoundWatch *sound, QObject *parent = nullptr);

    QString text() const { return m_text; }
    // What the text is about: it stays the same while only a number in the text counts.
    QString topic() const { return m_topic; }
    bool isWarning() const { return m_warning; }
    // Sound may be lost meanwhile: of a running recording, or what waits for its disk.
    bool isSoundAtStake() const { return m_timer.isActive(); }

Q_SIGNALS:
    void textChanged();
    void warningChanged();
    void soundAtStakeChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void followState();
    void followTake();
    void lookAtDisk();
    void judgeDisk(const platform::DiskState &disk);
    void refresh();
    void followReplacedDevice();
    void followProblem();
    void followOpening(const QUrl &unopened);
    void forgetOpening();
    void tellProblem();
    QString problem() const;
    enum class News { Nothing, Replacement, Problem };
    void tellFirst(News news);
    // `wrong`: the sentence that is told otherwise; empty when nothing else is wrong.
    bool isProblemTold(const Troubles &troubles, const QString &wrong) const;
    QString stateText() const;
    QString idleText() const;
    bool lookForTrouble();
    Troubles troubles();
    bool isMuted() const;
    void lookAtOutputs(Troubles &troubles);
    void lookForHoles(Troubles &troubles) const;
    bool isMissed() const;
    void watchEvery(int pause); // milliseconds, or 0 for not at all

    AppDelegate *m_delegate;
    SoundWatch *m_sound;
    DiskWatch m_disk;
    QBasicTimer m_timer;
    int m_interval = 0; // milliseconds; 0 while it does not run
    platform::Inquiry<platform::DiskState> m_question;
    bool m_diskIsSilent = false;
    bool m_isEnding = false; // it is about to be known whether all of a recording is in its file
    QString m_diskProblem;
    std::chrono::steady_clock::time_point m_diskProblemSeen;
    int m_state = 0;
    QString m_device; // of the recording; the choice for the next one may differ
    std::uint32_t m_deviceID = 0;
    QString m_replacement; // the device that came in place of the chosen one
    QString m_unopened; // that nothing opens what was to be opened last, as a sentence
    News m_news = News::Nothing; // told before anything older
    QBasicTimer m_newsTimer;
    QString m_text;
    QString m_topic;
    bool m_warning = false;
};
