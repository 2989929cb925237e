// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioExport.h"

#include <QStringList>
#include <cstdint>
#include <memory>

class KTAudioControl;

class KTAUDIO_EXPORT KTAudioControlDelegate {
public:
    virtual ~KTAudioControlDelegate() = default;
    // Other names are in the list than before. A new order alone, as of a new default input, is not reported,
    // nor is a sound server that restarts and has the same devices within two seconds. Main thread, from the
    // main loop.
    virtual void audioControlInputDeviceChanged(KTAudioControl *control) = 0;
    // isInputMuted() may answer differently now, for one device or more. Comes within a second of the change,
    // and after the report above where both have changed. Main thread, from the main loop. Optional.
    virtual void audioControlInputMuteChanged(KTAudioControl *control);
};

// The input devices of the sound system, and changes to them. Main thread only.
class KTAUDIO_EXPORT KTAudioControl {
public:
    static KTAudioControl *sharedAudioControl();

    // Not owned: the delegate outlives the control, or takes itself away with a null pointer.
    void setDelegate(KTAudioControlDelegate *delegate);

    // The system's default input first, the other inputs by name, monitors of outputs last; equal names are
    // told apart by " (2)", " (3)". Answers from a list kept up to date; the very first call waits for the
    // first list, 150 ms at most.
    QStringList inputDevicesName();

    // 0 for an unknown or empty name; a recorder for 0 does not start.
    std::uint32_t deviceIDFromName(const QString &name);

    // Whether the device gives only silence because it is muted, or its volume is zero. Known from the same
    // list, also for monitors of outputs; false for 0 and while the device is not there.
    bool isInputMuted(std::uint32_t deviceID);

    KTAudioControl(const KTAudioControl &) = delete;
    KTAudioControl &operator=(const KTAudioControl &) = delete;

private:
    class Private;
    KTAudioControl();
    ~KTAudioControl();
    std::unique_ptr<Private> d;
};
