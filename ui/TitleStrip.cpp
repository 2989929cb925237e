// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/TitleStrip.h"
#include "ui/CardStyle.h"
#include "ui/IconButton.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>
#include <algorithm>

namespace {

constexpr int sideMargin = 10;
constexpr int toolSpacing = 2;

QHBoxLayout *sideLayout()
{
    auto *layout = new QHBoxLayout;
    layout->setSpacing(CardStyle::scaled(toolSpacing));
    return layout;
}

} // namespace

TitleStrip::TitleStrip(QWidget *card)
    : QWidget(card)
    , m_tools(sideLayout())
    , m_windowButtons(sideLayout())
{
    setFixedHeight(CardStyle::scaled(CardStyle::titleStripHeight));
    auto *layout = new QHBoxLayout(this);
    const int margin = CardStyle::scaled(sideMargin);
    layout->setContentsMargins(margin, 0, margin, 0);
    layout->addLayout(m_tools);
    layout->addStretch(1);
    layout->addLayout(m_windowButtons);
    card->installEventFilter(this);
}

void TitleStrip::addTool(QAbstractButton *button)
{
    m_tools->addWidget(button);
}

void TitleStrip::addMinimiseButton()
{
    m_minimise = new IconButton(IconButton::Minimise, this);
    m_minimise->setAccessibleName(tr("Minimise"));
    m_minimise->setToolTip(tr("Minimise"));
    connect(m_minimise, &IconButton::clicked, this, [this] { window()->showMinimized(); });
    m_windowButtons->addWidget(m_minimise);
}

void TitleStrip::addCloseButton()
{
    m_close = new IconButton(IconButton::Close, this);
    m_close->setAccessibleName(tr("Close"));
    m_close->setToolTip(tr("Close"));
    connect(m_close, &IconButton::clicked, this, [this] { window()->close(); });
    m_windowButtons->addWidget(m_close);
}

// The same room on both sides, so that the title is in the middle of the card.
QRect TitleStrip::titleRoom() const
{
    const int widest = std::max(m_tools->sizeHint().width(), m_windowButtons->sizeHint().width());
    const int side = widest + CardStyle::scaled(sideMargin + toolSpacing);
    return rect().adjusted(side, 0, -side, 0);
}

// The window's title also tells whether a recording runs. When a flip begins it is already the title of the
// other card, and this one goes on saying what it said.
void TitleStrip::followTitle()
{
    const QString own = parentWidget()->windowTitle();
    const QString shown = window()->windowTitle();
    if (shown.contains(own))
        m_title = shown;
    else if (!m_title.contains(own))
        m_title = own;
    update(titleRoom());
}

void TitleStrip::showEvent(QShowEvent *)
{
    window()->installEventFilter(this);
    followTitle();
}

void TitleStrip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setFont(CardStyle::font(CardStyle::labelFontSize, QFont::DemiBold));
    painter.setPen(CardStyle::colours().label);
    const QRect room = titleRoom();
    const QString text = painter.fontMetrics().elidedText(m_title, Qt::ElideRight, room.width());
    painter.drawText(room, Qt::AlignCenter | Qt::TextSingleLine, text);
}

void TitleStrip::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = true;
    m_dragging = false;
    m_pressPosition = event->globalPosition().toPoint();
    m_grip = window()->pos() - m_pressPosition;
}

void TitleStrip::mouseMoveEvent(QMouseEvent *event)
{
    if (m_pressed)
        dragTo(event->globalPosition().toPoint());
}

void TitleStrip::mouseReleaseEvent(QMouseEvent *)
{
    m_pressed = false;
}

void TitleStrip::dragTo(const QPoint &globalPosition)
{
    const int distance = (globalPosition - m_pressPosition).manhattanLength();
    if (!m_dragging && distance < QApplication::startDragDistance())
        return;
    // The window system's own move knows about screen edges and other windows. Where it has none, the strip
    // moves the window itself.
    if (!m_dragging && window()->windowHandle() && window()->windowHandle()->startSystemMove()) {
        m_pressed = false;
        return;
    }
    m_dragging = true;
    window()->move(globalPosition + m_grip);
}

bool TitleStrip::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::WindowTitleChange)
        followTitle();
    return QWidget::eventFilter(watched, event);
}
