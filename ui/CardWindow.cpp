// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/CardWindow.h"
#include "platform/desktop/Compositor.h"
#include "ui/CardStyle.h"
#include "ui/FocusRing.h"
#include "ui/TitleStrip.h"
#include "ui/flip/FlipPermission.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>
#include <QShortcutEvent>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr Qt::WindowFlags cardFlags = Qt::Window | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint
    | Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint;

QLinearGradient groundOf(const QRectF &card)
{
    QLinearGradient gradient(card.topLeft(), card.bottomLeft());
    gradient.setColorAt(0, CardStyle::gradientTop);
    gradient.setColorAt(1, CardStyle::gradientBottom);
    return gradient;
}

} // namespace

CardWindow::CardWindow(TitleButtons buttons, QWidget *parent)
    // Style and fonts must be in place before the first child inherits them.
    : QWidget((CardStyle::install(), parent), cardFlags)
    , m_titleStrip(new TitleStrip(this))
    , m_content(new QWidget(this))
{
    setAttribute(Qt::WA_TranslucentBackground);
    setFixedSize(CardStyle::cardSize());
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_titleStrip);
    layout->addWidget(m_content, 1);
    if (buttons.testFlag(MinimiseButton))
        m_titleStrip->addMinimiseButton();
    if (buttons.testFlag(CloseButton))
        m_titleStrip->addCloseButton();
    new FocusRing(this);
    // Without a compositor the corners would be black.
    connect(&platform::CompositorWatch::shared(), &platform::CompositorWatch::changed, this, [this] {
        m_roundedCorners = platform::compositorRuns();
        update();
    });
}

void CardWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = m_roundedCorners ? CardStyle::scaled(CardStyle::cornerRadius) : 0;
    const QRectF card = rect();
    painter.setPen(Qt::NoPen);
    painter.setBrush(groundOf(card));
    painter.drawRoundedRect(card, radius, radius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(CardStyle::hairline, 1));
    painter.drawRoundedRect(card.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
}

void CardWindow::paintGround(QPainter &painter, const QWidget *control, const QRect &part)
{
    const QWidget *card = control;
    while (card->parentWidget() && !qobject_cast<const CardWindow *>(card))
        card = card->parentWidget();
    const QPoint corner = control->mapTo(card, QPoint(0, 0));
    painter.fillRect(part.adjusted(-1, -1, 1, 1), groundOf(QRectF(-corner, card->size())));
}

void CardWindow::showEvent(QShowEvent *event)
{
    m_roundedCorners = platform::compositorRuns();
    QWidget::showEvent(event);
    // All buttons exist by now; installing the filter on one for a second time does no harm.
    for (QAbstractButton *button : findChildren<QAbstractButton *>()) {
        if (button->window() == window())
            button->installEventFilter(this);
    }
    // After the first paint, which must not wait for the session bus.
    QTimer::singleShot(0, this, &FlipPermission::prepare);
}

void CardWindow::keyPressEvent(QKeyEvent *event)
{
    auto *button = qobject_cast<QAbstractButton *>(focusWidget());
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && button && button->isEnabled())
        button->click();
    else
        QWidget::keyPressEvent(event);
}

bool CardWindow::eventFilter(QObject *watched, QEvent *event)
{
    auto *button = qobject_cast<QAbstractButton *>(watched);
    if (!button || event->type() != QEvent::Shortcut || static_cast<QShortcutEvent *>(event)->isAmbiguous())
        return QWidget::eventFilter(watched, event);
    if (button->isCheckable())
        button->setFocus(Qt::ShortcutFocusReason);
    button->click();
    return true;
}
