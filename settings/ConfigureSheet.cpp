// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/ConfigureSheet.h"

#include "platform/Binding.h"
#include "platform/KeyPath.h"
#include "platform/desktop/PopUpMenu.h"
#include "settings/EncoderForm.h"
#include "settings/KTMP3ConfigureWndCtrl.h"
#include "ui/CardStyle.h"
#include "ui/SheetShade.h"
#include "ui/flip/Stage.h"
#include "ui_EncoderForm.h"
#include "ui_KTMP3ConfigureWndCtrl.h"

#include <QCloseEvent>
#include <QMenu>
#include <QShortcut>

using namespace Qt::StringLiterals;
using platform::bind;

namespace {

constexpr Qt::WindowFlags sheetFlags = Qt::Dialog | Qt::FramelessWindowHint;

// Narrower than a card, so that one can see it lie on the card.
constexpr int sheetWidth = 416;

} // namespace

ConfigureSheet::ConfigureSheet(KTMP3ConfigureWndCtrl *controller)
    : m_controller(controller)
    , m_ui(std::make_unique<Ui::KTMP3ConfigureWndCtrl>())
{
    setWindowTitle(tr("Encoder"));
    setWindowModality(Qt::WindowModal);
    m_ui->setupUi(content());
    CardStyle::scaleLayout(content()->layout());
    bindControls();
    connectCommands();
    setFixedSize(CardStyle::scaled(sheetWidth), sizeHint().height());
}

ConfigureSheet::~ConfigureSheet() = default;

void ConfigureSheet::bindControls()
{
    m_ui->encoder->bindTo(m_controller, u"selectedTag"_s);
    bind(m_ui->encoder, m_controller, u"enableQualityTarget"_s,
        [this](const QVariant &enabled) { m_ui->encoder->setQualityEnabled(enabled.toBool()); });
}

void ConfigureSheet::connectCommands()
{
    const Ui::EncoderForm &encoder = m_ui->encoder->controls();
    const auto chooseBy = [this](PopupButton *box, QMenu *menu, const QString &keyPath) {
        connect(box, &QPushButton::clicked, menu, [box, menu] { platform::popUpMenu(menu, box); });
        connect(menu, &QMenu::triggered, m_controller, [this, keyPath](const QAction *item) {
            platform::setValueForKeyPath(m_controller, keyPath, EncoderForm::titleOf(*item));
        });
    };
    chooseBy(encoder.boxEncoderEngine, encoder.encodeEngineMenu, u"config.encoderEngineQualityName"_s);
    chooseBy(encoder.boxVbrMode, encoder.vbrModeMenu, u"config.vbrModeName"_s);
    connect(m_ui->ok, &QPushButton::clicked, m_controller, [this] { m_controller->okAction(m_ui->ok); });
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, m_ui->ok, &QPushButton::click);
}

void ConfigureSheet::beginOn(QWidget *host)
{
    setParent(host->window(), sheetFlags);
    const auto *stage = qobject_cast<Stage *>(host->window());
    QWidget *face = stage ? stage->card() : host->window();
    m_shade = new SheetShade(face);
    move(face->mapToGlobal(QPoint((face->width() - width()) / 2, 0))
        + QPoint(0, CardStyle::scaled(CardStyle::titleStripHeight)));
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
    setParent(nullptr, sheetFlags);
    host->activateWindow();
}

// The window system's close button does the same as OK. An open sheet does not stand in the way of the end
// of the program or of the session.
void ConfigureSheet::closeEvent(QCloseEvent *event)
{
    event->accept();
    m_controller->okAction(this);
}
