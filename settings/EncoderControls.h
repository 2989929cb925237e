// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class PopupButton;
class QAction;
class QCheckBox;
class QLabel;
class QMenu;
class QObject;
class QRadioButton;
class QWidget;
class ValueSlider;

// The controls of an encoder configuration, which the preferences and the encoder sheet share. `controller`
// is an object that holds the configuration in its property `config`; it may be replaced at any time.
struct EncoderControls {
    QRadioButton *bitrateTarget;
    QRadioButton *qualityTarget;
    QLabel *qualityTitle;
    ValueSlider *quality;
    QLabel *qualityValue;
    QLabel *bitrateTitle;
    ValueSlider *bitrate;
    QLabel *bitrateValue;
    QCheckBox *constantBitrate;
    PopupButton *boxEncoderEngine;
    QMenu *encodeEngineMenu;
    QLabel *vbrTitle;
    PopupButton *boxVbrMode;
    QMenu *vbrModeMenu;

    void bindToConfigOf(QObject *controller) const;
    // The choice of the target. The key path holds a number; all but 0 is the quality.
    void bindTargetTo(QObject *controller, const QString &keyPath) const;
    // For the target that they have no effect on.
    void setQualityEnabled(bool enabled) const;
    void setBitrateEnabled(bool enabled) const;
};

// The controls of an interface file that has all of them.
template <typename Interface> EncoderControls encoderControlsOf(const Interface &ui)
{
    return {ui.bitrateTarget, ui.qualityTarget, ui.qualityTitle, ui.quality, ui.qualityValue, ui.bitrateTitle,
        ui.bitrate, ui.bitrateValue, ui.constantBitrate, ui.boxEncoderEngine, ui.encodeEngineMenu,
        ui.vbrTitle, ui.boxVbrMode, ui.vbrModeMenu};
}

// "5.0", "9.999": one decimal, or as many as are needed up to three.
QString qualityDesc(double encodeQuality);

// The item's title as the interface file has it. Some desktops mark a letter of it for the keyboard.
QString titleOf(const QAction &item);
