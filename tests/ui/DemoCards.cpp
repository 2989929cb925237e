// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "tests/ui/DemoCards.h"
#include "ui/CardStyle.h"
#include "ui/ElidedLabel.h"
#include "ui/IconButton.h"
#include "ui/PopupButton.h"
#include "ui/SegmentButton.h"
#include "ui/TitleStrip.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QSlider>

namespace testsupport {

namespace {

IconButton *tool(IconButton::Icon icon, const char *name)
{
    auto *button = new IconButton(icon);
    button->setAccessibleName(QString::fromLatin1(name));
    return button;
}

IconButton *transport(IconButton::Icon icon, int diameter, IconButton::Look look = IconButton::Disc)
{
    auto *button = new IconButton(icon);
    button->setDiameter(diameter);
    button->setLook(look);
    return button;
}

QVBoxLayout *column(CardWindow *card)
{
    auto *layout = new QVBoxLayout(card->content());
    layout->setContentsMargins(28, 14, 28, 20);
    layout->setSpacing(12);
    return layout;
}

QFrame *segments()
{
    auto *frame = new QFrame;
    frame->setProperty("segments", true);
    auto *row = new QHBoxLayout(frame);
    row->setContentsMargins(3, 3, 3, 3);
    row->setSpacing(2);
    for (const char *text : {"Bitrate", "Quality"}) {
        auto *segment = new SegmentButton;
        segment->setText(QString::fromLatin1(text));
        row->addWidget(segment);
        segment->setChecked(true);
    }
    return frame;
}

QSlider *slider(int value, bool enabled)
{
    auto *result = new QSlider(Qt::Horizontal);
    result->setValue(value);
    result->setEnabled(enabled);
    return result;
}

} // namespace

RecorderCard::RecorderCard()
    : CardWindow(MinimiseButton | CloseButton)
    , preferences(tool(IconButton::Gear, "Preferences"))
{
    setWindowTitle(QStringLiteral("Flipside"));
    titleStrip()->addTool(preferences);
    titleStrip()->addTool(tool(IconButton::Help, "Help"));
    auto *layout = column(this);
    auto *time = new QLabel(QStringLiteral("00:01:01.2"));
    time->setProperty("important", true);
    time->setFont(CardStyle::font(64, QFont::Light));
    layout->addWidget(time, 0, Qt::AlignCenter);
    auto *device = new PopupButton;
    device->setText(QStringLiteral("USB Microphone with a name that is longer than any card is wide, mono"));
    layout->addWidget(device);
    auto *row = new QHBoxLayout;
    layout->addLayout(row, 1);
    row->addWidget(transport(IconButton::Play, 46));
    row->itemAt(0)->widget()->setEnabled(false);
    row->addWidget(transport(IconButton::Record, 64, IconButton::Accent));
    row->addWidget(transport(IconButton::Pause, 46));
    row->addWidget(transport(IconButton::Stop, 46));
    auto *file = new ElidedLabel(QStringLiteral("2024-03-05 14h07m09s.mp3"));
    layout->addWidget(file);
}

PreferencesCard::PreferencesCard()
    : done(new QPushButton(QStringLiteral("Done")))
{
    setWindowTitle(QStringLiteral("Preferences"));
    auto *layout = column(this);
    layout->addWidget(segments());
    auto *grid = new QGridLayout;
    layout->addLayout(grid);
    grid->addWidget(new QLabel(QStringLiteral("Quality")), 0, 0);
    grid->addWidget(slider(50, true), 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("Bitrate")), 1, 0);
    grid->addWidget(slider(40, false), 1, 1);
    auto *constant = new QCheckBox(QStringLiteral("Restrict encoder to constant bitrate"));
    constant->setChecked(true);
    grid->addWidget(constant, 2, 1);
    auto *path = new ElidedLabel(QStringLiteral("/home/user/a/very/long/path/that/does/not/fit/Recordings"));
    path->setProperty("field", true);
    auto *row = new QHBoxLayout;
    layout->addLayout(row);
    row->addWidget(path, 1);
    row->addWidget(new QPushButton(QStringLiteral("Choose…")));
    auto *show = new QPushButton(QStringLiteral("Show"));
    show->setEnabled(false);
    row->addWidget(show);
    layout->addStretch(1);
    done->setProperty("primary", true);
    layout->addWidget(done, 0, Qt::AlignCenter);
}

} // namespace testsupport
