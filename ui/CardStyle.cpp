// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/CardStyle.h"
#include "ui/CardProxyStyle.h"

#include <QApplication>
#include <QFile>
#include <QFontInfo>
#include <QGridLayout>
#include <QPalette>
#include <QRegularExpression>
#include <QWidget>
#include <algorithm>
#include <cmath>

static void initialiseResources()
{
    // A static library's resources are not registered by themselves.
    Q_INIT_RESOURCE(style);
}

namespace CardStyle {

namespace {

// The desktops' usual fonts have 9 to 11 points at 96 dots per inch. Cards are drawn for 10 points.
constexpr double usualFontPixels = 13.34;
constexpr double largestUsualFontPixels = 15;
constexpr double largestTextScale = 2.0;

double measuredTextScale()
{
    const double pixels = QFontInfo(QApplication::font()).pixelSize();
    return pixels <= largestUsualFontPixels ? 1 : std::min(pixels / usualFontPixels, largestTextScale);
}

QPalette palette()
{
    QPalette colours(gradientTop, gradientBottom);
    colours.setColor(QPalette::WindowText, text);
    colours.setColor(QPalette::Text, text);
    colours.setColor(QPalette::ButtonText, text);
    colours.setColor(QPalette::BrightText, Qt::white);
    colours.setColor(QPalette::Base, sunken);
    colours.setColor(QPalette::AlternateBase, gradientBottom);
    colours.setColor(QPalette::ToolTipBase, sunken);
    colours.setColor(QPalette::ToolTipText, text);
    colours.setColor(QPalette::PlaceholderText, label);
    colours.setColor(QPalette::Highlight, done);
    colours.setColor(QPalette::HighlightedText, Qt::white);
    colours.setColor(QPalette::Link, done);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        QColor faded = text;
        faded.setAlphaF(disabledOpacity);
        colours.setColor(QPalette::Disabled, role, faded);
    }
    return colours;
}

// Lengths in the sheet are points of the card ("12pt"); Qt gets them as pixels.
QString styleSheet()
{
    QFile file(QStringLiteral(":/flipside/style.qss"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString source = QString::fromUtf8(file.readAll());
    static const QRegularExpression length(QStringLiteral("(-?\\d+)pt\\b"));
    QString sheet;
    qsizetype end = 0;
    for (const auto &match : length.globalMatch(source)) {
        sheet += QStringView(source).mid(end, match.capturedStart() - end);
        sheet += QString::number(scaled(match.capturedView(1).toInt())) + QStringLiteral("px");
        end = match.capturedEnd();
    }
    sheet += QStringView(source).mid(end);
    return sheet;
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
    const QMargins margins = layout->contentsMargins();
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
        scaleLayout(item->widget() ? item->widget()->layout() : item->layout());
    }
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

void install()
{
    static bool installed = false;
    if (std::exchange(installed, true))
        return;
    initialiseResources();
    QApplication::setFont(font(labelFontSize));
    QApplication::setStyle(new CardProxyStyle);
    QApplication::setPalette(palette());
    qApp->setStyleSheet(styleSheet());
}

} // namespace CardStyle
