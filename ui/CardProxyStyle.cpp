// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/CardProxyStyle.h"

#include "platform/desktop/Compositor.h"
#include "ui/CardStyle.h"
#include "ui/ControlPaint.h"
#include "ui/FocusRing.h"
#include "ui/IconPaths.h"
#include "ui/PopupButton.h"
#include "ui/SegmentButton.h"

#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QStyleOption>

using CardStyle::colours;
using CardStyle::scaled;

namespace {

constexpr int fieldPadding = 10;
constexpr int buttonPadding = 15;
constexpr QSize primarySize(140, 36);
constexpr int lowHeight = 26;
constexpr int quietPadding = 8;
constexpr int sliderHeight = 20;
constexpr int alertWidth = 300;

bool is(const QWidget *widget, const char *property)
{
    return widget && widget->property(property).toBool();
}

bool isPopup(const QWidget *widget)
{
    return qobject_cast<const QMenu *>(widget) || widget->inherits("QTipLabel");
}

// A box that pops up is rounded where its corners can be blended with what is below.
double popupRadius(const QWidget *widget, int points)
{
    return widget && widget->testAttribute(Qt::WA_TranslucentBackground) ? scaled(points) : 0;
}

void polishLabel(QLabel *label)
{
    const bool saysWhatHappened = label->objectName() == QLatin1String("qt_msgbox_label");
    if (saysWhatHappened || is(label, "important"))
        label->setForegroundRole(QPalette::Text);
    // Bold only where the text is known to fit: a message box measures its text before it is bold.
    const bool isAlert = saysWhatHappened && label->window()->objectName() == QLatin1String("alert");
    if (isAlert)
        label->setMinimumWidth(scaled(alertWidth));
    if (isAlert || is(label, "heading"))
        label->setFont(CardStyle::font(CardStyle::labelFontSize, QFont::DemiBold));
    // A label would stand where its text's language begins; in a mirrored layout it stands where the layout
    // does.
    if (label->layoutDirection() == Qt::RightToLeft && !(label->alignment() & Qt::AlignAbsolute))
        label->setAlignment(QStyle::visualAlignment(Qt::RightToLeft, label->alignment()) | Qt::AlignAbsolute);
    if (is(label, "field")) {
        label->setMargin(scaled(fieldPadding));
        label->setMinimumHeight(scaled(ControlPaint::fieldHeight));
    }
}

// What the toolkit's chooser shows beside the names of folders.
QPainterPath pathOf(QStyle::StandardPixmap icon)
{
    switch (icon) {
    case QStyle::SP_ArrowBack:
        return IconPaths::arrowLeft();
    case QStyle::SP_ArrowForward:
        return IconPaths::arrowRight();
    case QStyle::SP_FileDialogToParent:
        return IconPaths::arrowUp();
    case QStyle::SP_FileDialogNewFolder:
        return IconPaths::newFolder();
    default:
        return {};
    }
}

QIcon iconOf(const QPainterPath &path)
{
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        ControlPaint::icon(painter, pixmap.rect(), path, colours().text);
        icon.addPixmap(pixmap);
    }
    return icon;
}

// A card has a ring for the focus, around any control.
bool hasFocusRing(const QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (widget->findChild<FocusRing *>(QString(), Qt::FindDirectChildrenOnly))
            return true;
    }
    return false;
}

QSize pushButtonSize(const QSize &text, const QWidget *widget)
{
    if (is(widget, "primary"))
        return {std::max(text.width() + scaled(2 * buttonPadding), scaled(primarySize.width())),
            scaled(primarySize.height())};
    const bool isQuiet = is(widget, "quiet");
    const bool isLow = isQuiet || is(widget, "low");
    return {text.width() + scaled(2 * (isQuiet ? quietPadding : buttonPadding)),
        std::max(text.height(), scaled(isLow ? lowHeight : ControlPaint::fieldHeight))};
}

} // namespace

CardProxyStyle::CardProxyStyle()
    : QProxyStyle(QStringLiteral("Fusion"))
{
}

void CardProxyStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (isPopup(widget) && platform::compositorRuns())
        widget->setAttribute(Qt::WA_TranslucentBackground);
    if (auto *label = qobject_cast<QLabel *>(widget))
        polishLabel(label);
    if (is(widget, "quiet"))
        widget->setFont(CardStyle::font(CardStyle::labelFontSize, QFont::DemiBold));
    if (is(widget, "separator"))
        widget->setFixedHeight(1);
}

int CardProxyStyle::styleHint(
    StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returnData) const
{
    // A click on a slider's groove goes to the place that was clicked.
    if (hint == SH_Slider_AbsoluteSetButtons)
        return Qt::LeftButton;
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

QIcon CardProxyStyle::standardIcon(
    StandardPixmap icon, const QStyleOption *option, const QWidget *widget) const
{
    const QPainterPath path = pathOf(icon);
    return path.isEmpty() ? QProxyStyle::standardIcon(icon, option, widget) : iconOf(path);
}

int CardProxyStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
        return scaled(16);
    case PM_CheckBoxLabelSpacing:
        return scaled(10);
    case PM_SliderThickness:
    case PM_SliderControlThickness:
        return scaled(sliderHeight);
    case PM_SliderLength:
        return scaled(ControlPaint::sliderHandle);
    case PM_MenuPanelWidth:
        return 1;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
    case PM_ToolTipLabelFrameWidth:
        return scaled(5);
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QSize CardProxyStyle::sizeFromContents(
    ContentsType type, const QStyleOption *option, const QSize &contents, const QWidget *widget) const
{
    switch (type) {
    case CT_PushButton:
        return pushButtonSize(contents, widget);
    case CT_CheckBox: {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        return {size.width(), std::max(contents.height(), pixelMetric(PM_IndicatorHeight, option, widget))};
    }
    case CT_MenuItem: {
        const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
        if (item && item->menuItemType == QStyleOptionMenuItem::Separator)
            return {contents.width(), scaled(11)};
        if (!item)
            return contents;
        return {contents.width() + 2 * ControlPaint::menuItemIndent(*item), contents.height() + scaled(12)};
    }
    default:
        return QProxyStyle::sizeFromContents(type, option, contents, widget);
    }
}

QRect CardProxyStyle::subControlRect(
    ComplexControl control, const QStyleOptionComplex *option, SubControl part, const QWidget *widget) const
{
    const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_Slider || !slider || slider->orientation != Qt::Horizontal)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const int side = scaled(ControlPaint::sliderHandle);
    const QRect &all = slider->rect;
    if (part != SC_SliderHandle)
        return all;
    const int left = sliderPositionFromValue(
        slider->minimum, slider->maximum, slider->sliderPosition, all.width() - side, slider->upsideDown);
    return {all.left() + left, all.top() + (all.height() - side) / 2, side, side};
}

QRect CardProxyStyle::subElementRect(
    SubElement element, const QStyleOption *option, const QWidget *widget) const
{
    // Where assistive technology finds it, and clicks.
    if (element == SE_RadioButtonClickRect && qobject_cast<const SegmentButton *>(widget))
        return option->rect;
    return QProxyStyle::subElementRect(element, option, widget);
}

void CardProxyStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    switch (element) {
    case PE_PanelButtonCommand:
        if (qobject_cast<const PopupButton *>(widget))
            return ControlPaint::popupButton(*painter, *option);
        return ControlPaint::pushButton(*painter, *option, widget);
    case PE_IndicatorCheckBox:
        return ControlPaint::checkBox(*painter, *option);
    case PE_FrameFocusRect:
        if (!hasFocusRing(widget))
            ControlPaint::box(
                *painter, option->rect, scaled(ControlPaint::fieldRadius), {}, colours().focusRing);
        return;
    case PE_FrameMenu:
        return;
    case PE_PanelMenu:
        painter->setRenderHint(QPainter::Antialiasing);
        return ControlPaint::box(*painter, option->rect, popupRadius(widget, ControlPaint::menuRadius),
            colours().menu, colours().outline);
    case PE_PanelTipLabel:
        painter->setRenderHint(QPainter::Antialiasing);
        return ControlPaint::box(
            *painter, option->rect, popupRadius(widget, 5), colours().sunken, colours().outline);
    default:
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void CardProxyStyle::drawControl(
    ControlElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    if (element == CE_MenuItem && item && item->menuItemType != QStyleOptionMenuItem::SubMenu) {
        ControlPaint::menuItem(*painter, *item);
    } else if (element == CE_MenuEmptyArea) {
        return;
    } else if (element == CE_ShapedFrame && (is(widget, "field") || is(widget, "segments"))) {
        ControlPaint::field(*painter, option->rect, option->state & State_Enabled);
    } else if (element == CE_ShapedFrame && is(widget, "separator")) {
        painter->fillRect(option->rect, CardStyle::hairline);
    } else if (element == CE_CheckBoxLabel && button && (button->state & State_MouseOver)
        && (button->state & State_Enabled)) {
        QStyleOptionButton hovered(*button);
        hovered.palette.setColor(QPalette::WindowText, colours().text);
        QProxyStyle::drawControl(element, &hovered, painter, widget);
    } else {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void CardProxyStyle::drawComplexControl(
    ComplexControl control, const QStyleOptionComplex *option, QPainter *painter, const QWidget *widget) const
{
    const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_Slider || !slider || slider->orientation != Qt::Horizontal)
        return QProxyStyle::drawComplexControl(control, option, painter, widget);
    ControlPaint::slider(*painter, *slider, subControlRect(CC_Slider, slider, SC_SliderHandle, widget));
}
