// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/TakeHandle.h"

#include "app/AppDelegate.h"
#include "platform/OutputState.h"
#include "platform/desktop/Opener.h"
#include "ui/CardStyle.h"
#include "ui/ControlPaint.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace {

// In points: of the name in its frame, and of that behind the pointer.
constexpr int padding = 12;
constexpr int distance = 14;

// What hangs on the pointer.
QPixmap labelled(const QString &name, const QWidget *line)
{
    const int width = line->fontMetrics().horizontalAdvance(name) + 2 * CardStyle::scaled(padding);
    const QRect frame(0, 0, width, CardStyle::scaled(ControlPaint::fieldHeight));
    QPixmap picture(frame.size() * line->devicePixelRatio());
    picture.setDevicePixelRatio(line->devicePixelRatio());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const CardStyle::Colours &colours = CardStyle::colours();
    ControlPaint::box(
        painter, frame, CardStyle::scaled(ControlPaint::fieldRadius), colours.menu, colours.outline);
    painter.setFont(line->font());
    painter.setPen(colours.text);
    painter.drawText(frame, Qt::AlignCenter | Qt::TextSingleLine, name);
    return picture;
}

} // namespace

TakeHandle::TakeHandle(AppDelegate *delegate, QWidget *line, QWidget *button)
    : QObject(line)
    , m_delegate(delegate)
    , m_line(line)
    , m_menu(new QMenu(line))
{
    fillMenu();
    offerMenu(line);
    offerMenu(button);
    line->installEventFilter(this);
    connect(delegate, &AppDelegate::stateChanged, this, &TakeHandle::followState);
    followState();
}

void TakeHandle::offerMenu(QWidget *widget)
{
    widget->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(widget, &QWidget::customContextMenuRequested, m_menu,
        [this, widget](const QPoint &place) { m_menu->popup(widget->mapToGlobal(place)); });
}

void TakeHandle::fillMenu()
{
    QAction *const open = m_menu->addAction(tr("Open"));
    connect(open, &QAction::triggered, this,
        [this] { platform::Opener::shared().open(m_delegate->currentOutputURL()); });
    connect(m_menu, &QMenu::aboutToShow, open, [this, open] { open->setEnabled(isWhole()); });
    connect(m_menu->addAction(tr("Show in Folder")), &QAction::triggered, this,
        [this] { m_delegate->showOutputInFinder(this); });
    connect(m_menu->addAction(tr("Copy Path")), &QAction::triggered, this,
        [this] { QApplication::clipboard()->setText(m_delegate->currentOutputFile()); });
}

// Nor is a file given away that waits for its encoder or its disk: what takes a copy would get its beginning.
bool TakeHandle::isWhole() const
{
    const auto task = m_delegate->recordingTask();
    if (task && task->audioRecorder()->isDelivering())
        return false;
    return m_delegate->visibleShowInFinder()
        && std::ranges::none_of(platform::outputStates(), [this](const platform::OutputState &output) {
               return output.path == m_delegate->currentOutputFile() && output.bytesWaiting > 0;
           });
}

// A file that is still being written is not given away.
void TakeHandle::followState()
{
    m_line->setCursor(m_delegate->visibleShowInFinder() ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

bool TakeHandle::eventFilter(QObject *watched, QEvent *event)
{
    const bool presses = event->type() == QEvent::MouseButtonPress;
    if (!presses && event->type() != QEvent::MouseMove)
        return QObject::eventFilter(watched, event);
    const auto *mouse = static_cast<QMouseEvent *>(event);
    if (presses)
        m_pressedAt = mouse->pos();
    else if (mouse->buttons().testFlag(Qt::LeftButton)
        && (mouse->pos() - m_pressedAt).manhattanLength() >= QApplication::startDragDistance())
        drag();
    // Taken, or the press would go on to the card, and the moves with it.
    return mouse->buttons().testFlag(Qt::LeftButton);
}

void TakeHandle::drag()
{
    if (!isWhole())
        return;
    auto *file = new QMimeData;
    file->setUrls({m_delegate->currentOutputURL()});
    auto *drag = new QDrag(m_line);
    drag->setMimeData(file);
    drag->setPixmap(labelled(m_delegate->currentOutputURL().fileName(), m_line));
    drag->setHotSpot({-CardStyle::scaled(distance), 0});
    drag->exec(Qt::CopyAction);
}
