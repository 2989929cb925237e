// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/WindowTitle.h"

#include "app/AppDelegate.h"

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
    m_time = toTheSecond(m_delegate->lengthOfRecording());
    show();
}

// The same title again changes nothing, and is not told to the window system.
void WindowTitle::show()
{
    switch (m_state) {
    case RecorderStateRecording:
        return m_card->setWindowTitle(tr("Recording %1 - %2").arg(m_time, m_name));
    case RecorderStateRecordingPaused:
        return m_card->setWindowTitle(tr("Paused %1 - %2").arg(m_time, m_name));
    case RecorderStatePlaying:
        return m_card->setWindowTitle(tr("Playing - %1").arg(m_name));
    case RecorderStatePlayingPaused:
        return m_card->setWindowTitle(tr("Playback paused - %1").arg(m_name));
    default:
        return m_card->setWindowTitle(m_name);
    }
}
