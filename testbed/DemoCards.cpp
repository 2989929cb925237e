// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "testbed/DemoCards.h"
#include "ui/CardStyle.h"
#include "ui/IconButton.h"
#include "ui/TitleStrip.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

namespace testbed {

namespace {

QVBoxLayout *column(CardWindow *card)
{
    auto *layout = new QVBoxLayout(card->content());
    layout->setContentsMargins(28, 14, 28, 20);
    return layout;
}

} // namespace

RecorderCard::RecorderCard()
    : CardWindow(MinimiseButton | CloseButton)
    , preferences(new IconButton(IconButton::Gear))
{
    setWindowTitle(QStringLiteral("Flipside"));
    preferences->setAccessibleName(QStringLiteral("Preferences"));
    titleStrip()->addTool(preferences);
    auto *layout = column(this);
    auto *time = new QLabel(QStringLiteral("00:01:01.2"));
    time->setProperty("important", true);
    time->setFont(CardStyle::font(64, QFont::Light));
    layout->addWidget(time, 1, Qt::AlignCenter);
    auto *row = new QHBoxLayout;
    layout->addLayout(row, 1);
    for (const auto icon : {IconButton::Play, IconButton::Record, IconButton::Pause, IconButton::Stop}) {
        auto *button = new IconButton(icon);
        button->setDiameter(icon == IconButton::Record ? 64 : 46);
        button->setLook(icon == IconButton::Record ? IconButton::Accent : IconButton::Disc);
        row->addWidget(button);
    }
}

PreferencesCard::PreferencesCard()
    : done(new QPushButton(QStringLiteral("Done")))
{
    setWindowTitle(QStringLiteral("Preferences"));
    auto *layout = column(this);
    layout->addStretch(1);
    layout->addWidget(new QSlider(Qt::Horizontal));
    layout->addWidget(new QCheckBox(QStringLiteral("Restrict encoder to constant bitrate")));
    layout->addStretch(1);
    done->setProperty("primary", true);
    layout->addWidget(done, 0, Qt::AlignCenter);
}

} // namespace testbed
