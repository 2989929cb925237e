// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/CardStyle.h"
#include "platform/desktop/ContrastPreference.h"
#include "ui/CardProxyStyle.h"

#include <QApplication>
#include <QFontInfo>
#include <QGridLayout>
#include <QPalette>
#include <QScreen>
#include <QToolTip>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace CardStyle {

namespace {

// The desktops' usual fonts have 9 to 11 points at 96 dots per inch. Cards are drawn for 10 points.
constexpr double usualFontPixels = 13.34;
constexpr double largestUsualFontPixels = 15;
constexpr double largestTextScale = 2.0;
// Below it nobody could read the card.
constexpr double smallestTextScale = 0.75;
// In pixels, for the shadow at one side: some window managers take it for a part of the window.
constexpr int besideCard = 40;

double wantedTextScale()
{
    const double pixels = QFontInfo(QApplication::font()).pixelSize();
    return pixels <= largestUsualFontPixels ? 1 : std::min(pixels / usualFontPixels, largestTextScale);
}

double measuredTextScale()
{
    const QScreen *const screen = QGuiApplication::primaryScreen();
    if (!screen)
        return wantedTextScale();
    const QSize room = screen->availableSize() - QSize(besideCard, besideCard);
    const double fitting = std::min(double(room.width()) / cardWidth, double(room.height()) / cardHeight);
    return std::min(wantedTextScale(), std::max(fitting, smallestTextScale));
}

constexpr Colours usual{
    .text{0xf2, 0xf4, 0xf5},
    .label = labelGrey,
    .outline{0x85, 0x8f, 0x96},
    .raised{0x3f, 0x46, 0x4c},
    .sunken{0x1e, 0x21, 0x24},
    .menu{0x2b, 0x30, 0x35},
    .selected{0x64, 0x6f, 0x77},
    .selectedText{255, 255, 255},
    .done{0x27, 0x75, 0xaa},
    .doneEdge{0x5a, 0xa5, 0xd8},
    .record{0xe5, 0x48, 0x4d},
    .recordEdge{},
    .recordMark{0xe5, 0x48, 0x4d},
    .warning{0xf0, 0xb4, 0x29},
    .focusRing{0x7f, 0xc4, 0xf0},
};

constexpr Colours high{
    .text{255, 255, 255},
    .label{0xe3, 0xe8, 0xea},
    .outline{0xc9, 0xd0, 0xd4},
    .raised{0x2a, 0x2f, 0x33},
    .sunken{0x0f, 0x11, 0x12},
    .menu{0x14, 0x17, 0x19},
    .selected{0xe3, 0xe8, 0xea},
    .selectedText{0x0f, 0x11, 0x12},
    .done{0x17, 0x52, 0x7e},
    .doneEdge{0xb9, 0xe1, 0xff},
    .record{0xc8, 0x28, 0x2d},
    .recordEdge{255, 255, 255},
    .recordMark{0xff, 0x8a, 0x8d},
    .warning{0xff, 0xd1, 0x66},
    .focusRing{0xb9, 0xe1, 0xff},
};

const Colours *current = &usual;

QPalette palette()
{
    const Colours &now = *current;
    QPalette shades(gradientTop, gradientBottom);
    shades.setColor(QPalette::WindowText, now.label);
    shades.setColor(QPalette::Text, now.text);
    shades.setColor(QPalette::ButtonText, now.text);
    shades.setColor(QPalette::BrightText, now.warning);
    shades.setColor(QPalette::Base, now.sunken);
    shades.setColor(QPalette::AlternateBase, gradientBottom);
    shades.setColor(QPalette::ToolTipBase, now.sunken);
    shades.setColor(QPalette::ToolTipText, now.text);
    shades.setColor(QPalette::PlaceholderText, now.label);
    shades.setColor(QPalette::Highlight, now.done);
    shades.setColor(QPalette::HighlightedText, Qt::white);
    shades.setColor(QPalette::Link, now.doneEdge);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        QColor faded = shades.color(QPalette::Active, role);
        faded.setAlphaF(disabledOpacity);
        shades.setColor(QPalette::Disabled, role, faded);
    }
    return shades;
}

void usePalette()
{
    QApplication::setPalette(palette());
    QToolTip::setPalette(palette());
}

// An interface file says it in points of the card.
void scaleSmallestSize(QWidget *widget)
{
    widget->setMinimumSize(scaled(widget->minimumWidth()), scaled(widget->minimumHeight()));
}

void scaleSpacer(QSpacerItem *spacer)
{
    const QSize size = spacer->sizeHint();
    const QSizePolicy policy = spacer->sizePolicy();
    spacer->changeSize(
        scaled(size.width()), scaled(size.height()), policy.horizontalPolicy(), policy.verticalPolicy());
}

} // namespace

double textScale()
{
    // Measured before `install` replaces the application's font, and never again.
    static const double scale = measuredTextScale();
    return scale;
}

int scaled(double points)
{
    return static_cast<int>(std::lround(points * textScale()));
}

void scaleLayout(QLayout *layout)
{
    if (!layout)
        return;
    QMargins margins = layout->contentsMargins();
    // The toolkit mirrors what is in a layout, but not what is around it.
    if (QGuiApplication::isRightToLeft())
        margins = {margins.right(), margins.top(), margins.left(), margins.bottom()};
    layout->setContentsMargins(
        scaled(margins.left()), scaled(margins.top()), scaled(margins.right()), scaled(margins.bottom()));
    if (auto *grid = qobject_cast<QGridLayout *>(layout)) {
        grid->setHorizontalSpacing(scaled(grid->horizontalSpacing()));
        grid->setVerticalSpacing(scaled(grid->verticalSpacing()));
    } else {
        layout->setSpacing(scaled(layout->spacing()));
    }
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem *item = layout->itemAt(i);
        if (QWidget *widget = item->widget()) {
            scaleSmallestSize(widget);
            scaleLayout(widget->layout());
        } else if (QSpacerItem *spacer = item->spacerItem()) {
            scaleSpacer(spacer);
        } else {
            scaleLayout(item->layout());
        }
    }
    layout->invalidate();
}

QFont font(double points, QFont::Weight weight)
{
    const double pixels = points * textScale();
    QFont result = QApplication::font();
    result.setPixelSize(static_cast<int>(std::lround(pixels)));
    result.setWeight(weight);
    return result;
}

QSize cardSize()
{
    return {scaled(cardWidth), scaled(cardHeight)};
}

const Colours &colours()
{
    return *current;
}

void setHighContrast(bool wanted)
{
    const Colours *const chosen = wanted ? &high : &usual;
    if (std::exchange(current, chosen) == chosen)
        return;
    usePalette();
    const auto widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets)
        widget->update();
}

void install()
{
    static bool installed = false;
    if (std::exchange(installed, true))
        return;
    auto &contrast = platform::ContrastPreference::shared();
    current = contrast.isHigh() ? &high : &usual;
    QObject::connect(&contrast, &platform::ContrastPreference::changed, qApp,
        [&contrast] { setHighContrast(contrast.isHigh()); });
    QApplication::setFont(font(labelFontSize));
    QApplication::setStyle(new CardProxyStyle);
    usePalette();
}

} // namespace CardStyle
