// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/ConfigureSheet.h"

#include "platform/Binding.h"
#include "platform/desktop/PopUpMenu.h"
#include "settings/EncoderControls.h"
#include "settings/KTMP3ConfigureWndCtrl.h"
#include "ui/CardStyle.h"
#include "ui/SheetShade.h"
#include "ui_KTMP3ConfigureWndCtrl.h"

#include <QCloseEvent>
#include <QMenu>
#include <QShortcut>

using namespace Qt::StringLiterals;
using platform::bind;

namespace {

constexpr Qt::WindowFlags SheetFlags = Qt::Dialog | Qt::FramelessWindowHint;

// Narrower than a card, so that it is seen to lie on one.
constexpr int SheetWidth = 416;

} // namespace

ConfigureSheet::ConfigureSheet(KTMP3ConfigureWndCtrl *controller)
    : m_controller(controller)
    , m_ui(std::make_unique<Ui::KTMP3ConfigureWndCtrl>())
{
    setWindowTitle(u"Encoder"_s);
    setWindowModality(Qt::WindowModal);
    m_ui->setupUi(content());
    CardStyle::scaleLayout(content()->layout());
    bindControls();
    connectCommands();
    setFixedSize(CardStyle::scaled(SheetWidth), sizeHint().height());
}

ConfigureSheet::~ConfigureSheet() = default;

void ConfigureSheet::bindControls()
{
    const EncoderControls encoder = encoderControlsOf(*m_ui);
    encoder.bindToConfigOf(m_controller);
    encoder.bindTargetTo(m_controller, u"selectedTag"_s);
    bind(this, m_controller, u"enableQualityTarget"_s,
        [encoder](const QVariant &enabled) { encoder.setQualityEnabled(enabled.toBool()); });
    bind(this, m_controller, u"selectedTag"_s,
        [encoder](const QVariant &tag) { encoder.setBitrateEnabled(tag.toInt() == 0); });
}

void ConfigureSheet::connectCommands()
{
    connect(m_ui->boxEncoderEngine, &QPushButton::clicked, this,
        [this] { platform::popUpMenu(m_ui->encodeEngineMenu, m_ui->boxEncoderEngine); });
    connect(m_ui->boxVbrMode, &QPushButton::clicked, this,
        [this] { platform::popUpMenu(m_ui->vbrModeMenu, m_ui->boxVbrMode); });
    connect(m_ui->encodeEngineMenu, &QMenu::triggered, this, [this](const QAction *item) {
        if (const auto config = m_controller->config())
            config->setEncoderEngineQualityName(titleOf(*item));
    });
    connect(m_ui->vbrModeMenu, &QMenu::triggered, this, [this](const QAction *item) {
        if (const auto config = m_controller->config())
            config->setVbrModeName(titleOf(*item));
    });
    connect(m_ui->ok, &QPushButton::clicked, m_controller, [this] { m_controller->okAction(m_ui->ok); });
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, m_ui->ok, &QPushButton::click);
}

void ConfigureSheet::beginOn(QWidget *host)
{
    setParent(host->window(), SheetFlags);
    m_shade = new SheetShade(host->window());
    const QRect frame = host->window()->geometry();
    move(frame.left() + (frame.width() - width()) / 2,
        frame.top() + CardStyle::scaled(CardStyle::TitleStripHeight));
    show();
    activateWindow();
}

void ConfigureSheet::end()
{
    QWidget *const host = parentWidget();
    if (!host)
        return;
    hide();
    delete m_shade;
    // A host that is destroyed later must not take the sheet with it.
    setParent(nullptr, SheetFlags);
    host->activateWindow();
}

// The window system's close button: the same as OK. A sheet that is open does not stand in the way of the end
// of the program or of the session.
void ConfigureSheet::closeEvent(QCloseEvent *event)
{
    event->accept();
    m_controller->okAction(this);
}
