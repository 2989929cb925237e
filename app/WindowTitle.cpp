// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/WindowTitle.h"

#include "app/AppDelegate.h"
#include "ui/flip/Stage.h"

#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

const QString noTime = u"00:00"_s;

// "00:12" of "00:00:12.3", and "01:00:12" after an hour.
QString toTheSecond(const QString &length)
{
    const QString seconds = length.section(u'.', 0, 0);
    return seconds.startsWith(u"00:"_s) ? seconds.mid(3) : seconds;
}

} // namespace

WindowTitle::WindowTitle(const AppDelegate *delegate, QWidget *card)
    : QObject(card)
    , m_delegate(delegate)
    , m_card(card)
    , m_name(card->windowTitle())
    , m_state(delegate->state())
{
    connect(delegate, &AppDelegate::stateChanged, this, &WindowTitle::followState);
    connect(delegate, &AppDelegate::lengthOfRecordingChanged, this, &WindowTitle::followTime);
}

// Until its first report a recording shows the time of the one before.
void WindowTitle::followState()
{
    const int previous = std::exchange(m_state, m_delegate->state());
    if (m_state == RecorderStateRecording && previous == RecorderStateIdle)
        m_time = noTime;
    show();
}

void WindowTitle::followTime()
{
    const QString time = toTheSecond(m_delegate->lengthOfRecording());
    if (std::exchange(m_time, time) != time)
        show();
}

// The same title again changes nothing, and is not told to the window system. Another card may be up while a
// recording is started by another program; its title ends with the program's name as well, which the toolkit
// would put behind a dash of another kind.
void WindowTitle::show()
{
    m_card->setWindowTitle(titled(m_name));
    Stage *const stage = Stage::of(m_card);
    if (!stage || !stage->card() || stage->card() == m_card)
        return;
    const QString other = stage->card()->windowTitle();
    stage->setWindowTitle(m_state == RecorderStateIdle ? other : titled(other + u" - "_s + m_name));
}

QString WindowTitle::titled(const QString &name) const
{
    switch (m_state) {
    case RecorderStateRecording:
        return tr("Recording %1 - %2").arg(m_time, name);
    case RecorderStateRecordingPaused:
        return tr("Paused %1 - %2").arg(m_time, name);
    case RecorderStatePlaying:
        return tr("Playing - %1").arg(name);
    case RecorderStatePlayingPaused:
        return tr("Playback paused - %1").arg(name);
    default:
        return name;
    }
}
