// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/EncoderControls.h"

#include "encoder/KTMp3LameConfig.h"
#include "platform/Binding.h"
#include "platform/KeyPath.h"
#include "ui/PopupButton.h"
#include "ui/ValueSlider.h"

#include <QActionGroup>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QRadioButton>
#include <initializer_list>

using namespace Qt::StringLiterals;
using platform::bind;
using platform::BindingDirection;

namespace {

// The bitrates of MPEG-1 and MPEG-2 layer III. A constant bitrate can only be one of these; an average may
// lie between them, and so may the slider.
const QList<double> layerThreeBitrates
    = {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 192, 224, 256, 320};
const QList<double> wholeQualities = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};

// The box shows the name that the configuration has, and its menu a tick beside the item of that title.
void bindChoice(
    PopupButton *box, const QString &keys, QMenu *menu, QObject *controller, const QString &keyPath)
{
    auto *choices = new QActionGroup(menu);
    for (QAction *item : menu->actions()) {
        item->setCheckable(true);
        choices->addAction(item);
    }
    bind(box, controller, keyPath, [box, menu, keys](const QVariant &name) {
        box->setText(name.toString());
        box->setToolTip(keys);
        box->setAccessibleDescription(name.toString());
        for (QAction *item : menu->actions())
            item->setChecked(titleOf(*item) == name.toString());
    });
}

} // namespace

void EncoderControls::bindToConfigOf(QObject *controller) const
{
    quality->setScale(KTMp3LameConfig::minEncoderQuality(), KTMp3LameConfig::maxEncoderQuality(), 0.1);
    quality->setDetents(wholeQualities);
    bitrate->setScale(KTMp3LameConfig::minBitrate(), KTMp3LameConfig::maxBitrate(), 1);
    bitrate->setDetents(layerThreeBitrates);

    bind(quality, "amount", controller, u"config.encodeQuality"_s, BindingDirection::TwoWay);
    bind(qualityValue, controller, u"config.encodeQuality"_s,
        [label = qualityValue](const QVariant &value) { label->setText(qualityDesc(value.toDouble())); });
    bind(bitrate, "amount", controller, u"config.bitrate"_s, BindingDirection::TwoWay);
    bind(bitrateValue, "text", controller, u"config.bitrateDesc"_s);
    bind(constantBitrate, "checked", controller, u"config.isCBR"_s, BindingDirection::TwoWay);
    bindChoice(boxEncoderEngine, u"How much time the encoder takes (Alt+E)"_s, encodeEngineMenu, controller,
        u"config.encoderEngineQualityName"_s);
    bindChoice(boxVbrMode, u"How the encoder varies the bitrate (Alt+V)"_s, vbrModeMenu, controller,
        u"config.vbrModeName"_s);
}

void EncoderControls::bindTargetTo(QObject *controller, const QString &keyPath) const
{
    const auto choose = [controller, keyPath](int target) {
        return [controller, keyPath, target](bool chosen) {
            // The number may be another one that means the same.
            const bool isQuality = platform::valueForKeyPath(controller, keyPath).toInt() != 0;
            if (chosen && isQuality != (target != 0))
                platform::setValueForKeyPath(controller, keyPath, target);
        };
    };
    QObject::connect(
        bitrateTarget, &QRadioButton::toggled, controller, choose(KTMp3LameConfig::BitrateTarget));
    QObject::connect(
        qualityTarget, &QRadioButton::toggled, controller, choose(KTMp3LameConfig::QualityTarget));
    bind(qualityTarget, controller, keyPath, [controls = *this](const QVariant &target) {
        const bool isQuality = target.toInt() != 0;
        auto *const chosen = isQuality ? controls.qualityTarget : controls.bitrateTarget;
        chosen->setChecked(true);
        // The keyboard begins at the choice that is made; on the other one a Space would change it.
        if (!chosen->window()->focusWidget())
            chosen->setFocus();
    });
}

void EncoderControls::setQualityEnabled(bool enabled) const
{
    for (QWidget *control :
        std::initializer_list<QWidget *>{qualityTitle, quality, qualityValue, vbrTitle, boxVbrMode})
        control->setEnabled(enabled);
}

void EncoderControls::setBitrateEnabled(bool enabled) const
{
    for (QWidget *control :
        std::initializer_list<QWidget *>{bitrateTitle, bitrate, bitrateValue, constantBitrate})
        control->setEnabled(enabled);
}

QString qualityDesc(double encodeQuality)
{
    QString text = QString::number(encodeQuality, 'f', 3);
    while (text.endsWith(u'0') && !text.endsWith(".0"_L1))
        text.chop(1);
    return text;
}

QString titleOf(const QAction &item)
{
    return item.text().remove(u'&');
}
