// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/EncoderForm.h"

#include "encoder/KTMp3LameConfig.h"
#include "platform/Binding.h"
#include "platform/ForPeople.h"
#include "ui_EncoderForm.h"

#include <QActionGroup>
#include <QMenu>
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
constexpr double qualityStep = 0.1;
constexpr double bitrateStep = 1; // kbit/s

// "5.0", "9.999": one decimal, or as many as are needed up to three.
QString qualityDesc(double encodeQuality)
{
    QString digits = QString::number(encodeQuality, 'f', 3);
    int decimals = 3;
    for (; decimals > 1 && digits.endsWith(u'0'); --decimals)
        digits.chop(1);
    return platform::localeOfNumbers().toString(encodeQuality, 'f', decimals);
}

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
        for (QAction *item : menu->actions()) {
            const bool isChosen = EncoderForm::titleOf(*item) == name.toString();
            item->setChecked(isChosen);
            if (!isChosen)
                continue;
            const QString shown = item->text().remove(u'&');
            box->setText(shown);
            box->setToolTip(keys);
            box->setAccessibleDescription(shown);
        }
    });
}

} // namespace

EncoderForm::EncoderForm(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::EncoderForm>())
{
    m_ui->setupUi(this);
    m_ui->quality->setScale(
        KTMp3LameConfig::minEncoderQuality(), KTMp3LameConfig::maxEncoderQuality(), qualityStep);
    m_ui->quality->setDetents(wholeQualities);
    m_ui->bitrate->setScale(KTMp3LameConfig::minBitrate(), KTMp3LameConfig::maxBitrate(), bitrateStep);
    m_ui->bitrate->setDetents(layerThreeBitrates);
    connect(m_ui->qualityTarget, &QRadioButton::toggled, this, [this](bool isQuality) {
        if (isQuality == (m_target != KTMp3LameConfig::BitrateTarget))
            return;
        setTarget(isQuality ? KTMp3LameConfig::QualityTarget : KTMp3LameConfig::BitrateTarget);
        Q_EMIT targetChosen();
    });
}

EncoderForm::~EncoderForm() = default;

void EncoderForm::bindTo(QObject *controller, const QString &targetKeyPath)
{
    bind(this, "target", controller, targetKeyPath, BindingDirection::TwoWay);
    bind(m_ui->quality, "amount", controller, u"config.encodeQuality"_s, BindingDirection::TwoWay);
    bind(m_ui->qualityValue, controller, u"config.encodeQuality"_s,
        [this](const QVariant &value) { m_ui->qualityValue->setText(qualityDesc(value.toDouble())); });
    bind(m_ui->bitrate, "amount", controller, u"config.bitrate"_s, BindingDirection::TwoWay);
    bind(m_ui->bitrateValue, controller, u"config.bitrate"_s, [this](const QVariant &value) {
        m_ui->bitrateValue->setText(
            tr("%1kbps").arg(platform::localeOfNumbers().toString(value.toLongLong())));
    });
    bind(m_ui->constantBitrate, "checked", controller, u"config.isCBR"_s, BindingDirection::TwoWay);
    bindChoice(m_ui->boxEncoderEngine, tr("How much time the encoder takes (Alt+E)"), m_ui->encodeEngineMenu,
        controller, u"config.encoderEngineQualityName"_s);
    bindChoice(m_ui->boxVbrMode, tr("How the encoder varies the bitrate (Alt+V)"), m_ui->vbrModeMenu,
        controller, u"config.vbrModeName"_s);
}

void EncoderForm::setTarget(int target)
{
    m_target = target;
    const bool isBitrate = m_target == KTMp3LameConfig::BitrateTarget;
    auto *const chosen = isBitrate ? m_ui->bitrateTarget : m_ui->qualityTarget;
    chosen->setChecked(true);
    // The focus starts on the choice that is in force; on the other one, Space would change it.
    if (!window()->focusWidget())
        chosen->setFocus();
    for (QWidget *control : std::initializer_list<QWidget *>{
             m_ui->bitrateTitle, m_ui->bitrate, m_ui->bitrateValue, m_ui->constantBitrate})
        control->setEnabled(isBitrate);
}

void EncoderForm::setQualityEnabled(bool enabled)
{
    for (QWidget *control : std::initializer_list<QWidget *>{
             m_ui->qualityTitle, m_ui->quality, m_ui->qualityValue, m_ui->vbrTitle, m_ui->boxVbrMode})
        control->setEnabled(enabled);
}

QString EncoderForm::titleOf(const QAction &item)
{
    const QVariant name = item.property("name");
    return name.isValid() ? name.toString() : item.text().remove(u'&');
}
